#pragma once

#include "platform/BackgroundThread.h"
#include "platform/SecretStore.h"

namespace orvella {

class CocoaSecrets;

/// The viewer's keychain: one generic password for each service and account.
///
/// It is asked on a thread of the store, because it may wait for the viewer. A change that has begun is made, also when
/// the store goes away, which waits for it; at the end of the session the process may end before it.
class MacSecretStore final : public SecretStore {
public:
    /// `suffix` ends the name of every service; it keeps the items of a profile apart.
    explicit MacSecretStore(CocoaSecrets& secrets, QString suffix = {});

    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    QCoro::Task<Finding> look(QString service, QString account) override;
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

private:
    [[nodiscard]] std::string nameOf(const QString& service) const;

    CocoaSecrets& m_secrets;
    QString m_suffix;
    BackgroundThread m_thread;
};

} // namespace orvella
