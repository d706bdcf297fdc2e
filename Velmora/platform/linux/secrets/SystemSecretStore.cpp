#include "platform/linux/secrets/SystemSecretStore.h"

#include <tuple>

namespace orvella {

SystemSecretStore::SystemSecretStore(Clock& clock, const QString& folder)
    : m_file(folder)
    , m_mark(folder)
    , m_keyring(clock)
    , m_awaitedKeyring(clock, m_keyring)
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
    const Key key {service, account};
    const auto additions = m_additions;
    std::optional<Secret> kept;
    if (!m_onlyInKeyring.contains(key))
        kept = co_await m_file.read(service, account, stop);
    if (end.stop_requested() || stop.stop_requested())
        co_return std::nullopt;
    const auto answer = co_await askKeyring(key, stop);
    if (end.stop_requested() || stop.stop_requested())
        co_return std::nullopt;
    const auto isClear = answer || (answer.trouble() == KeyringTrouble::noCollection && !isInKeyring(key));
    if (!isClear)
        m_unclear.insert(key);
    std::optional<Secret> item;
    if (answer && *answer)
        item = co_await withItem(key, **answer, kept);
    else if (isClear)
        item = co_await withoutItem(key, kept);
    else
        item = co_await withoutKeyring(key, kept, answer.trouble());
    if (!end.stop_requested() && !kept && additions == m_additions && isInKeyring(key))
        m_onlyInKeyring.insert(key);
    co_return item;
}

QCoro::Task<SecretStore::Finding> SystemSecretStore::look(QString service, QString account)
{
    return m_keyring.look(std::move(service), std::move(account));
}

/// Waits for the keyring where the item of this run is not known yet and lies there.
QCoro::Task<FromKeyring<std::optional<Secret>>> SystemSecretStore::askKeyring(Key key, std::stop_token stop)
{
    const auto end = m_end.get_token();
    auto isAwaited = false;
    if (!m_held.contains(key))
        isAwaited = co_await m_mark.isSet(key.first, key.second);
    if (end.stop_requested())
        co_return KeyringTrouble::stopped;
    FromKeyring<std::optional<Secret>> answer;
    if (isAwaited)
        answer = co_await m_awaitedKeyring.readItem(key.first, key.second, stop);
    else
        answer = co_await m_keyring.readItem(key.first, key.second, stop);
    co_return answer;
}

/// The item of this run lies there: a keyring without a collection has closed it away, not lost it.
bool SystemSecretStore::isInKeyring(const Key& key) const
{
    const auto held = m_held.find(key);
    return held != m_held.end() && held->second.place == Place::keyring;
}

std::optional<Secret> SystemSecretStore::rememberedOr(const Key& key, const std::optional<Secret>& kept)
{
    if (kept)
        m_held.try_emplace(key, Held {*kept, Place::file});
    const auto held = m_held.find(key);
    return held == m_held.end() ? std::nullopt : std::optional(held->second.value);
}

QCoro::Task<std::optional<Secret>> SystemSecretStore::withoutKeyring(
    Key key, std::optional<Secret> kept, KeyringTrouble trouble)
{
    const auto fileTakesOver = kept && trouble == KeyringTrouble::absent && !m_held.contains(key);
    const auto item = rememberedOr(key, kept);
    if (fileTakesOver)
        co_await unmark(key);
    co_return item;
}

QCoro::Task<Secret> SystemSecretStore::withItem(Key key, Secret item, std::optional<Secret> kept)
{
    const auto end = m_end.get_token();
    const auto held = m_held.find(key);
    const auto isOther = held != m_held.end() && held->second.place == Place::file && held->second.value != item;
    const auto chosen = isOther ? held->second.value : item;
    if (!isOther)
        m_held.insert_or_assign(key, Held {item, Place::keyring});
    const auto isMarked = co_await mark(key);
    if (!isMarked || end.stop_requested())
        co_return chosen;
    if (kept == item && isInKeyring(key)) // A move that was cut short.
        co_await m_file.remove(key.first, key.second);
    co_return chosen;
}

QCoro::Task<std::optional<Secret>> SystemSecretStore::withoutItem(Key key, std::optional<Secret> kept)
{
    if (isInKeyring(key)) { // Somebody has removed it.
        m_held.erase(key);
        m_onlyInKeyring.erase(key);
    }
    const auto item = rememberedOr(key, kept);
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
    const auto isMarked = co_await mark(key);
    // Another may have been added to the file meanwhile.
    if (!isMarked || end.stop_requested() || !isInKeyring(key))
        co_return;
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
    ++m_additions;
    m_onlyInKeyring.erase(Key {service, account});
    m_held.insert_or_assign(Key {service, account}, Held {value, place});
    if (place == Place::keyring) {
        std::ignore = co_await mark(Key {service, account});
        if (!end.stop_requested() && m_unclear.erase(Key {service, account}) > 0)
            std::ignore = co_await m_keyring.removeOtherItems(service, account, value);
    }
    if (place != Place::file)
        co_return;
    co_await m_file.add(service, account, value);
    if (end.stop_requested())
        co_return;
    co_await unmark(Key {service, account});
}

QCoro::Task<> SystemSecretStore::remove(QString service, QString account)
{
    const auto end = m_end.get_token();
    m_held.erase(Key {service, account});
    m_onlyInKeyring.erase(Key {service, account});
    if (!m_unclear.contains(Key {service, account})) {
        const auto removed = co_await m_keyring.removeItem(service, account);
        if (end.stop_requested())
            co_return;
        if (removed)
            co_await unmark(Key {service, account});
        if (end.stop_requested())
            co_return;
    }
    co_await m_file.remove(service, account);
}

/// Whether the mark stands. Every read comes by here, so what was set in this run is not looked for again.
QCoro::Task<bool> SystemSecretStore::mark(Key key)
{
    const auto end = m_end.get_token();
    if (m_marked.contains(key))
        co_return true;
    const auto unmarkings = m_unmarkings;
    const auto isSet = co_await m_mark.set(key.first, key.second);
    if (end.stop_requested() || !isSet || unmarkings != m_unmarkings)
        co_return false;
    m_marked.insert(key);
    co_return true;
}

QCoro::Task<> SystemSecretStore::unmark(Key key)
{
    ++m_unmarkings;
    m_marked.erase(key);
    co_await m_mark.clear(key.first, key.second);
}

} // namespace orvella
