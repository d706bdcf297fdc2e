#include "simulation/SimulatedKeyring.h"

#include <algorithm>
#include <array>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

SimulatedKeyring::SimulatedKeyring(Clock& clock, Chance& chance, Journal& journal)
    : m_clock(clock)
    , m_chance(chance)
    , m_journal(journal)
{
}

QCoro::Task<std::optional<Secret>> SimulatedKeyring::read(QString service, QString /*account*/, std::stop_token stop)
{
    ++m_reading;
    if (isBusy() && !stop.stop_requested())
        co_await answered(stop);
    --m_reading;
    if (stop.stop_requested())
        co_return std::nullopt;
    auto secret = found(service);
    m_hasFoundNothing = !secret;
    co_return secret;
}

QCoro::Task<SecretStore::Finding> SimulatedKeyring::look(QString service, QString /*account*/)
{
    switch (m_mood) {
    case Mood::open:
    case Mood::slow:
        break;
    case Mood::locked:
        co_return Finding::locked;
    case Mood::refusing:
        co_return Finding::refused;
    case Mood::absent:
        co_return Finding::absent;
    }
    co_return m_items.contains(service) ? Finding::item : Finding::noItem;
}

QCoro::Task<> SimulatedKeyring::add(QString service, QString /*account*/, Secret value)
{
    const bool isMade = co_await isChanged(u"keyring: add "_s + service);
    if (!isMade)
        co_return;
    m_known.insert_or_assign(service, value.reveal());
    if (keepsChanges())
        m_items.insert_or_assign(service, value.reveal());
}

QCoro::Task<> SimulatedKeyring::remove(QString service, QString /*account*/)
{
    const bool isMade = co_await isChanged(u"keyring: remove "_s + service);
    if (!isMade)
        co_return;
    m_known.erase(service);
    if (keepsChanges())
        m_items.erase(service);
}

QCoro::Task<bool> SimulatedKeyring::isChanged(QString event)
{
    m_journal.note(event);
    const auto run = m_run;
    ++m_changing;
    if (isBusy())
        co_await answered({});
    --m_changing;
    co_return run == m_run;
}

void SimulatedKeyring::changeMood()
{
    using enum Mood;
    static constexpr std::array kMoods {open, open, open, slow, locked, refusing, absent};
    m_mood = m_chance.pick(kMoods);
    m_journal.note(u"keyring: mood %1"_s.arg(static_cast<int>(m_mood)));
    if (m_mood != locked)
        answerLocked();
}

void SimulatedKeyring::endRun()
{
    ++m_run;
    for (const auto& waiting : std::exchange(m_waiting, {})) {
        if (const auto call = waiting.lock())
            call->resume();
    }
    m_locked.clear();
    m_known.clear();
    m_hasFoundNothing = false;
}

bool SimulatedKeyring::knows(const QByteArray& token) const
{
    return std::ranges::any_of(m_known, [&](const auto& item) { return item.second == token; });
}

bool SimulatedKeyring::isBusy() const
{
    return m_mood == Mood::locked || m_mood == Mood::slow || m_answersUntil > m_clock.now();
}

HeldFlow::Wait SimulatedKeyring::answered(std::stop_token stop)
{
    const auto call = std::make_shared<HeldFlow>();
    std::erase_if(m_waiting, [](const auto& earlier) { return earlier.expired(); });
    m_waiting.push_back(call);
    if (m_mood == Mood::locked)
        m_locked.push_back(call);
    else
        answerLater(call);
    return call->resumedOrStopped(std::move(stop));
}

std::optional<Secret> SimulatedKeyring::found(const QString& service)
{
    if (const auto known = m_known.find(service); known != m_known.end())
        return Secret(known->second);
    const auto item = m_items.find(service);
    if (item == m_items.end() || m_mood == Mood::refusing || m_mood == Mood::absent)
        return std::nullopt;
    m_known.insert_or_assign(service, item->second);
    return Secret(item->second);
}

void SimulatedKeyring::answerLocked()
{
    for (const auto& call : std::exchange(m_locked, {}))
        answerLater(call);
}

void SimulatedKeyring::answerLater(const std::shared_ptr<HeldFlow>& call)
{
    const auto pause = m_mood == Mood::slow ? m_chance.between(1ms, 9s) : 0ms;
    m_answersUntil = std::max(m_answersUntil, m_clock.now()) + pause;
    m_clock.startAlarm(m_answersUntil - m_clock.now(), [call] { call->resume(); });
}

} // namespace orvella::simulation
