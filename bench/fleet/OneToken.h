#pragma once

#include "core/Keychain.h"

namespace orvella::fleet {

/// A keyring that holds the device token and nothing else: it answers at once and keeps no record of its calls.
class OneToken final : public SecretStore {
public:
    explicit OneToken(QByteArray token)
        : m_token(std::move(token))
    {
    }

    QCoro::Task<std::optional<Secret>> read(QString service, QString /*account*/, std::stop_token /*stop*/) override
    {
        co_return service == Keychain::kService ? std::optional(m_token) : std::nullopt;
    }

    QCoro::Task<Finding> look(QString service, QString /*account*/) override
    {
        co_return service == Keychain::kService ? Finding::item : Finding::noItem;
    }

    QCoro::Task<> add(QString /*service*/, QString /*account*/, Secret /*value*/) override { co_return; }
    QCoro::Task<> remove(QString /*service*/, QString /*account*/) override { co_return; }

private:
    Secret m_token;
};

} // namespace orvella::fleet
