#include "platform/linux/secrets/KeyringSecretStore.h"

#include "platform/linux/secrets/JoinedStop.h"
#include "platform/linux/secrets/KeyringSession.h"
#include "platform/linux/secrets/SharedWait.h"

#include <array>
#include <tuple>
#include <utility>

namespace orvella {

using namespace std::chrono_literals;

namespace {

// Between the attempts; a service that the bus starts anew is back within them.
constexpr std::array<Clock::duration, 3> kPauses {1s, 2s, 4s};

// A service that says each time that it has unlocked, and has not, is not asked for ever.
constexpr int kMostUnlockings = 3;

} // namespace

/// One question to the viewer and, when it is over, the answer.
struct KeyringSecretStore::Question {
    SharedWait over;
    FromKeyring<> answer;
};

KeyringSecretStore::KeyringSecretStore(Clock& clock, QDBusConnection bus)
    : m_clock(clock)
    , m_bus(std::move(bus))
{
}

KeyringSecretStore::~KeyringSecretStore()
{
    // Every flow resumes and ends in here, while the members are still alive.
    m_end.request_stop();
}

QCoro::Task<std::optional<Secret>> KeyringSecretStore::read(QString service, QString account, std::stop_token stop)
{
    auto item = co_await readItem(std::move(service), std::move(account), std::move(stop));
    co_return item ? *item : std::nullopt;
}

QCoro::Task<SecretStore::Finding> KeyringSecretStore::look(QString service, QString account)
{
    const auto stop = m_end.get_token();
    const auto opened = co_await session(stop);
    if (!opened)
        co_return Finding::absent;
    const auto found = co_await (*opened)->search(service, account, stop);
    if (!found)
        co_return Finding::absent;
    if (!found->unlocked.empty())
        co_return Finding::item;
    auto isLocked = !found->locked.empty();
    if (!isLocked) {
        const auto locked = co_await lockedDefault(*opened, stop);
        if (!locked)
            co_return locked.trouble() == KeyringTrouble::noCollection ? Finding::noItem : Finding::absent;
        isLocked = !locked->empty();
    }
    if (!isLocked)
        co_return Finding::noItem;
    co_return m_hasRefused ? Finding::refused : Finding::locked;
}

QCoro::Task<> KeyringSecretStore::add(QString service, QString account, Secret value)
{
    std::ignore = co_await addItem(std::move(service), std::move(account), std::move(value));
}

QCoro::Task<> KeyringSecretStore::remove(QString service, QString account)
{
    std::ignore = co_await removeItem(std::move(service), std::move(account));
}

QCoro::Task<FromKeyring<std::optional<Secret>>> KeyringSecretStore::readItem(
    QString service, QString account, std::stop_token stop)
{
    const JoinedStop either(std::move(stop), m_end.get_token());
    Attempt<std::optional<Secret>> attempt = [this, service, account](std::stop_token token) {
        return readOnce(service, account, std::move(token));
    };
    auto answer = co_await persist(std::move(attempt), either.token());
    co_return answer;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::addItem(QString service, QString account, Secret value)
{
    Attempt<> attempt = [this, service, account, value](
                            std::stop_token token) { return addOnce(service, account, value, std::move(token)); };
    const auto answer = co_await persist(std::move(attempt), m_end.get_token());
    co_return answer;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::removeItem(QString service, QString account)
{
    Attempt<> attempt = [this, service, account](
                            std::stop_token token) { return removeOnce(service, account, std::move(token)); };
    const auto answer = co_await persist(std::move(attempt), m_end.get_token());
    co_return answer;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::removeOtherItems(QString service, QString account, Secret kept)
{
    Attempt<> attempt = [this, service, account, kept](std::stop_token token) {
        return removeOthersOnce(service, account, kept, std::move(token));
    };
    const auto answer = co_await persist(std::move(attempt), m_end.get_token());
    co_return answer;
}

template <class T> QCoro::Task<FromKeyring<T>> KeyringSecretStore::persist(Attempt<T> attempt, std::stop_token stop)
{
    for (std::size_t tries = 0; !stop.stop_requested(); ++tries) {
        auto answer = co_await attempt(stop);
        if (stop.stop_requested())
            break;
        if (answer || answer.trouble() == KeyringTrouble::refused || answer.trouble() == KeyringTrouble::noCollection)
            co_return answer;
        m_session.reset();
        const auto mayChange = answer.trouble() == KeyringTrouble::failed || answer.trouble() == KeyringTrouble::locked
            || (answer.trouble() == KeyringTrouble::absent && m_wasThere);
        if (!mayChange || tries == kPauses.size()) {
            m_wasThere = false;
            co_return KeyringTrouble::absent;
        }
        co_await m_clock.sleep(kPauses.at(tries), stop);
    }
    co_return KeyringTrouble::stopped;
}

QCoro::Task<FromKeyring<std::optional<Secret>>> KeyringSecretStore::readOnce(
    QString service, QString account, std::stop_token stop)
{
    const auto items = co_await find(service, account, Wanted::anyItem, stop);
    if (!items)
        co_return items.trouble();
    if (items->empty())
        co_return std::optional<Secret>();
    const auto opened = co_await session(stop);
    if (!opened)
        co_return opened.trouble();
    const auto secret = co_await (*opened)->secret(items->front(), stop);
    if (!secret)
        co_return secret.trouble();
    co_return std::optional(*secret);
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::addOnce(
    QString service, QString account, Secret value, std::stop_token stop)
{
    const auto opened = co_await session(stop);
    if (!opened)
        co_return opened.trouble();
    const auto collection = co_await openCollection(*opened, stop);
    if (!collection)
        co_return collection.trouble();
    const auto created = co_await (*opened)->createItem(*collection, service, account, value, stop);
    co_return created;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::removeOnce(QString service, QString account, std::stop_token stop)
{
    const auto items = co_await find(service, account, Wanted::everyItem, stop);
    if (!items)
        co_return items.trouble();
    const auto removed = co_await removeAll(*items, stop);
    co_return removed;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::removeOthersOnce(
    QString service, QString account, Secret kept, std::stop_token stop)
{
    const auto items = co_await find(service, account, Wanted::everyItem, stop);
    if (!items)
        co_return items.trouble();
    std::vector<Path> others;
    for (const auto& item : *items) {
        const auto opened = co_await session(stop);
        if (!opened)
            co_return opened.trouble();
        const auto secret = co_await (*opened)->secret(item, stop);
        if (!secret)
            co_return secret.trouble();
        if (*secret != kept)
            others.push_back(item);
    }
    if (others.size() == items->size())
        co_return {};
    const auto removed = co_await removeAll(std::move(others), stop);
    co_return removed;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::removeAll(std::vector<Path> items, std::stop_token stop)
{
    for (const auto& item : items) {
        const auto opened = co_await session(stop);
        if (!opened)
            co_return opened.trouble();
        const auto deleted = co_await (*opened)->deleteItem(item, stop);
        if (!deleted)
            co_return deleted;
    }
    co_return {};
}

QCoro::Task<FromKeyring<KeyringSecretStore::Session>> KeyringSecretStore::session(std::stop_token stop)
{
    if (m_session && m_session->isCurrent())
        co_return FromKeyring<Session>(m_session);
    auto opened = co_await KeyringSession::open(m_clock, kAnswerLimit, m_bus, stop);
    if (opened && !stop.stop_requested()) {
        m_session = *opened;
        m_wasThere = true;
    }
    co_return opened;
}

/// Looks for the items and has unlocked what keeps them from being found or used.
QCoro::Task<FromKeyring<std::vector<KeyringSecretStore::Path>>> KeyringSecretStore::find(
    QString service, QString account, Wanted wanted, std::stop_token stop)
{
    for (int round = 0; round < kMostUnlockings; ++round) {
        const auto opened = co_await session(stop);
        if (!opened)
            co_return opened.trouble();
        const auto found = co_await (*opened)->search(service, account, stop);
        if (!found)
            co_return found.trouble();
        FromKeyring<std::vector<Path>> locked = found->locked;
        // Some services do not know what is in a locked collection: only an open one has clearly no such item.
        if (found->unlocked.empty() && found->locked.empty())
            locked = co_await lockedDefault(*opened, stop);
        if (!locked)
            co_return locked;
        if (locked->empty() && !found->unlocked.empty())
            m_hasRefused = false;
        if (locked->empty() || (wanted == Wanted::anyItem && !found->unlocked.empty()))
            co_return found->unlocked;
        const auto unlocked = co_await unlock(*opened, *locked, stop);
        if (!unlocked)
            co_return unlocked.trouble();
    }
    co_return KeyringTrouble::failed;
}

/// The default collection, if it is locked.
QCoro::Task<FromKeyring<std::vector<KeyringSecretStore::Path>>> KeyringSecretStore::lockedDefault(
    Session session, std::stop_token stop)
{
    const auto collection = co_await session->defaultCollection(stop);
    if (!collection)
        co_return collection.trouble();
    if (collection->isEmpty())
        co_return KeyringTrouble::noCollection;
    const auto isLocked = co_await session->isLocked(*collection, stop);
    if (!isLocked)
        co_return isLocked.trouble();
    if (*isLocked)
        co_return std::vector<Path> {*collection};
    m_hasRefused = false;
    co_return std::vector<Path>();
}

/// The default collection, made and unlocked where that is necessary.
QCoro::Task<FromKeyring<KeyringSecretStore::Path>> KeyringSecretStore::openCollection(
    Session session, std::stop_token stop)
{
    auto collection = co_await session->defaultCollection(stop);
    if (collection && collection->isEmpty()) {
        Attempt<> create = [session](
                               std::stop_token token) { return session->createDefaultCollection(std::move(token)); };
        const auto created = co_await askViewer(std::move(create), stop);
        if (!created)
            co_return created.trouble();
        collection = co_await session->defaultCollection(stop);
    }
    if (!collection)
        co_return collection;
    if (collection->isEmpty())
        co_return KeyringTrouble::failed;
    const auto isLocked = co_await session->isLocked(*collection, stop);
    if (!isLocked)
        co_return isLocked.trouble();
    if (!*isLocked) {
        m_hasRefused = false;
        co_return collection;
    }
    const auto unlocked = co_await unlock(session, {*collection}, stop);
    if (!unlocked)
        co_return unlocked.trouble();
    co_return collection;
}

QCoro::Task<FromKeyring<>> KeyringSecretStore::unlock(Session session, std::vector<Path> objects, std::stop_token stop)
{
    Attempt<> ask = [session, objects](std::stop_token token) { return session->unlock(objects, std::move(token)); };
    const auto answer = co_await askViewer(std::move(ask), stop);
    co_return answer;
}

/// Asks the question, or waits for the one that is being asked; its answer then counts for both.
QCoro::Task<FromKeyring<>> KeyringSecretStore::askViewer(Attempt<> question, std::stop_token stop)
{
    if (m_hasRefused)
        co_return KeyringTrouble::refused;
    const auto asked = m_question ? m_question : std::make_shared<Question>();
    if (!m_question) {
        m_question = asked;
        ask(std::move(question), asked);
    }
    co_await asked->over.wait(stop);
    if (stop.stop_requested())
        co_return KeyringTrouble::stopped;
    co_return asked->answer;
}

/// Runs by itself, so that the prompt stays when the flow that needed it first does not.
QCoro::Task<> KeyringSecretStore::ask(Attempt<> question, std::shared_ptr<Question> asked)
{
    const auto stop = m_end.get_token();
    asked->answer = co_await question(stop);
    if (!stop.stop_requested()) {
        m_question.reset();
        m_hasRefused = !asked->answer && asked->answer.trouble() == KeyringTrouble::refused;
    }
    asked->over.end();
}

} // namespace orvella
