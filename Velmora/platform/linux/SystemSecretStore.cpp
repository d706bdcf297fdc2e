#include "platform/linux/SystemSecretStore.h"

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
    const Key key {service, account};
    if (!answer)
        co_return withoutKeyring(key, kept);
    if (!*answer) {
        auto item = co_await withoutItem(key, kept);
        co_return item;
    }
    const auto item = co_await withItem(key, **answer, kept);
    co_return item;
}

QCoro::Task<SecretStore::Finding> SystemSecretStore::look(QString service, QString account)
{
    return m_keyring.look(std::move(service), std::move(account));
}

std::optional<Secret> SystemSecretStore::withoutKeyring(const Key& key, const std::optional<Secret>& kept)
{
    if (kept)
        m_held.try_emplace(key, Held {*kept, Place::file});
    const auto held = m_held.find(key);
    return held == m_held.end() ? std::nullopt : std::optional(held->second.value);
}

QCoro::Task<Secret> SystemSecretStore::withItem(Key key, Secret item, std::optional<Secret> kept)
{
    const auto held = m_held.find(key);
    if (held != m_held.end() && held->second.place == Place::file && held->second.value != item)
        co_return held->second.value;
    m_held.insert_or_assign(key, Held {item, Place::keyring});
    if (kept == item) // A move that was cut short.
        co_await m_file.remove(key.first, key.second);
    co_return item;
}

QCoro::Task<std::optional<Secret>> SystemSecretStore::withoutItem(Key key, std::optional<Secret> kept)
{
    const auto held = m_held.find(key);
    if (held != m_held.end() && held->second.place == Place::keyring) // Somebody has removed it.
        m_held.erase(held);
    const auto item = withoutKeyring(key, kept);
    if (item)
        co_await moveToKeyring(key, *item);
    co_return item;
}

QCoro::Task<> SystemSecretStore::moveToKeyring(Key key, Secret value)
{
    const auto end = m_end.get_token();
    const auto [service, account] = key;
    const auto added = co_await m_keyring.addItem(service, account, value);
    if (end.stop_requested() || !added)
        co_return;
    const auto found = co_await m_keyring.readItem(service, account, end);
    if (end.stop_requested() || !found || *found != value)
        co_return;
    if (const auto held = m_held.find(key); held != m_held.end() && held->second.value == value)
        held->second.place = Place::keyring;
    co_await m_file.remove(service, account);
}

QCoro::Task<> SystemSecretStore::add(QString service, QString account, Secret value)
{
    const auto end = m_end.get_token();
    const auto added = co_await m_keyring.addItem(service, account, value);
    if (end.stop_requested())
        co_return;
    const auto isAbsent = !added && added.trouble() == KeyringTrouble::absent;
    const auto place = added ? Place::keyring : isAbsent ? Place::file : Place::memory;
    m_held.insert_or_assign(Key {service, account}, Held {value, place});
    if (place == Place::file)
        co_await m_file.add(service, account, value);
}

QCoro::Task<> SystemSecretStore::remove(QString service, QString account)
{
    const auto end = m_end.get_token();
    m_held.erase(Key {service, account});
    co_await m_keyring.remove(service, account);
    if (end.stop_requested())
        co_return;
    co_await m_file.remove(service, account);
}

} // namespace orvella
