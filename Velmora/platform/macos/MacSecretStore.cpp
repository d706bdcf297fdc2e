#include "platform/macos/MacSecretStore.h"

#include "platform/macos/CocoaSecrets.h"

#include <QCoroFuture>

#include <utility>

namespace orvella {

namespace {

// Of Keychain Services.
constexpr CocoaSecrets::Status kSuccess = 0;
constexpr CocoaSecrets::Status kItemNotFound = -25300;
constexpr CocoaSecrets::Status kInteractionNotAllowed = -25308;
constexpr CocoaSecrets::Status kAuthorisationFailed = -25293;
constexpr CocoaSecrets::Status kUserCancelled = -128;

SecretStore::Finding finding(CocoaSecrets::Status status)
{
    using Finding = SecretStore::Finding;
    switch (status) {
    case kSuccess:
        return Finding::item;
    case kItemNotFound:
        return Finding::noItem;
    case kInteractionNotAllowed:
        return Finding::locked;
    case kAuthorisationFailed:
    case kUserCancelled:
        return Finding::refused;
    default:
        return Finding::absent;
    }
}

} // namespace

MacSecretStore::MacSecretStore(CocoaSecrets& secrets, QString suffix)
    : m_secrets(secrets)
    , m_suffix(std::move(suffix))
{
}

QCoro::Task<std::optional<Secret>> MacSecretStore::read(QString service, QString account, std::stop_token stop)
{
    if (stop.stop_requested())
        co_return std::nullopt;
    auto reading = m_thread.run([&secrets = m_secrets, name = nameOf(service), account = account.toStdString()] {
        return secrets.read(name, account);
    });
    const auto answer = co_await reading;
    if (stop.stop_requested() || answer.status != kSuccess || !answer.bytes)
        co_return std::nullopt;
    co_return Secret(QByteArray::fromStdString(*answer.bytes));
}

QCoro::Task<SecretStore::Finding> MacSecretStore::look(QString service, QString account)
{
    auto looking = m_thread.run([&secrets = m_secrets, name = nameOf(service), account = account.toStdString()] {
        return secrets.look(name, account);
    });
    const auto status = co_await looking;
    co_return finding(status);
}

QCoro::Task<> MacSecretStore::add(QString service, QString account, Secret value)
{
    auto adding = m_thread.run([&secrets = m_secrets, name = nameOf(service), account = account.toStdString(), value] {
        return secrets.add(name, account, value.reveal().toStdString());
    });
    co_await adding;
}

QCoro::Task<> MacSecretStore::remove(QString service, QString account)
{
    auto removing = m_thread.run([&secrets = m_secrets, name = nameOf(service), account = account.toStdString()] {
        return secrets.remove(name, account);
    });
    co_await removing;
}

std::string MacSecretStore::nameOf(const QString& service) const
{
    return (service + m_suffix).toStdString();
}

} // namespace orvella
