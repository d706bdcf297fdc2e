#include "platform/linux/SystemSecretStore.h"

#include <utility>

namespace orvella {

SystemSecretStore::SystemSecretStore(Clock& clock, const QString& folder)
    : m_file(folder)
    , m_keyring(clock)
{
}

SystemSecretStore::~SystemSecretStore()
{
    // The flows that wait for the keyring resume when it goes, those that wait for the file later.
    m_end.request_stop();
}

QCoro::Task<std::optional<Secret>> SystemSecretStore::read(QString service, QString account, std::stop_token stop)
{
    const auto end = m_end.get_token();
    const auto kept = co_await m_file.read(service, account, stop);
    if (end.stop_requested() || stop.stop_requested())
        co_return std::nullopt;
    const auto answer = co_await m_keyring.readItem(service, account, stop);
    if (end.stop_requested() || stop.stop_requested())
        co_return std::nullopt;
    if (!answer || (!*answer && !kept))
        co_return kept;
    if (!*answer)
        co_await moveToKeyring(service, account, *kept);
    else if (*answer == kept) // A move that was cut short.
        co_await m_file.remove(service, account);
    co_return *answer ? *answer : kept;
}

QCoro::Task<SecretStore::Finding> SystemSecretStore::look(QString service, QString account)
{
    return m_keyring.look(std::move(service), std::move(account));
}

QCoro::Task<> SystemSecretStore::moveToKeyring(QString service, QString account, Secret value)
{
    const auto end = m_end.get_token();
    const auto added = co_await m_keyring.addItem(service, account, value);
    if (end.stop_requested() || !added)
        co_return;
    const auto found = co_await m_keyring.readItem(service, account, end);
    if (end.stop_requested() || !found || *found != value)
        co_return;
    co_await m_file.remove(service, account);
}

QCoro::Task<> SystemSecretStore::add(QString service, QString account, Secret value)
{
    const auto end = m_end.get_token();
    const auto added = co_await m_keyring.addItem(service, account, value);
    if (end.stop_requested() || added || added.trouble() != KeyringTrouble::absent)
        co_return;
    co_await m_file.add(service, account, value);
}

QCoro::Task<> SystemSecretStore::remove(QString service, QString account)
{
    const auto end = m_end.get_token();
    co_await m_keyring.remove(service, account);
    if (end.stop_requested())
        co_return;
    co_await m_file.remove(service, account);
}

} // namespace orvella
