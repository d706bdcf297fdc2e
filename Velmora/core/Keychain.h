#pragma once

#include "platform/SecretStore.h"

#include <QLatin1String>

namespace orvella {

/// The device token: the secret that the service gave to this installation. Every failure is silent.
class Keychain final {
public:
    /// Where the token is kept.
    static constexpr QLatin1String kService {"orvella.device-token"};
    /// Where earlier versions kept it: read, never written or removed.
    static constexpr QLatin1String kLegacyService {"quillon.device-token"};

    explicit Keychain(SecretStore& secrets);

    /// The token under `service`. An empty item is a token; one that is not UTF-8 is none.
    QCoro::Task<std::optional<Secret>> readToken(QString service, std::stop_token stop) const;
    /// Replaces the token under `service`. Ends between the two steps where `stop` was requested: the store may be
    /// gone.
    QCoro::Task<> writeToken(Secret token, QString service, std::stop_token stop) const;
    QCoro::Task<> deleteToken(QString service) const;

    /// The token wherever it is; one that only the older name has is copied to the current one.
    QCoro::Task<std::optional<Secret>> deviceToken(std::stop_token stop) const;
    /// What there is to say of the current token, without asking the viewer for anything.
    QCoro::Task<SecretStore::Finding> lookForToken() const;

private:
    SecretStore& m_secrets;
};

} // namespace orvella
