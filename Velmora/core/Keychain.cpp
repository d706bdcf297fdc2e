#include "core/Keychain.h"

namespace orvella {

namespace {

constexpr QLatin1String kAccount {"default"};

} // namespace

Keychain::Keychain(SecretStore& secrets)
    : m_secrets(secrets)
{
}

QCoro::Task<std::optional<Secret>> Keychain::readToken(QString service, std::stop_token stop) const
{
    auto token = co_await m_secrets.read(std::move(service), kAccount, stop);
    if (stop.stop_requested() || !token || !token->reveal().isValidUtf8())
        co_return std::nullopt;
    co_return token;
}

QCoro::Task<> Keychain::writeToken(Secret token, QString service, std::stop_token stop) const
{
    auto& secrets = m_secrets;
    if (!token.reveal().isValidUtf8())
        co_return;
    co_await secrets.remove(service, kAccount);
    if (stop.stop_requested())
        co_return;
    co_await secrets.add(service, kAccount, std::move(token));
}

QCoro::Task<> Keychain::deleteToken(QString service) const
{
    co_await m_secrets.remove(std::move(service), kAccount);
}

QCoro::Task<SecretStore::Finding> Keychain::lookForToken() const
{
    return m_secrets.look(kService, kAccount);
}

QCoro::Task<std::optional<Secret>> Keychain::deviceToken(std::stop_token stop) const
{
    const Keychain keychain(*this);
    auto token = co_await keychain.readToken(kService, stop);
    if (token || stop.stop_requested())
        co_return token;
    token = co_await keychain.readToken(kLegacyService, stop);
    if (!token || stop.stop_requested())
        co_return std::nullopt;
    co_await keychain.writeToken(*token, kService, stop);
    co_return token;
}

} // namespace orvella
