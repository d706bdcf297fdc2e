#include "platform/linux/secrets/KeyringWait.h"

#include "platform/linux/bus/BusEnd.h"
#include "platform/linux/secrets/JoinedStop.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.secrets"_L1;

} // namespace

KeyringWait::KeyringWait(Clock& clock, Clock::duration limit, QDBusConnection bus)
    : m_clock(clock)
    , m_limit(limit)
    , m_timer(clock.startTimer(limit, [this] { end(); }))
    , m_bus(std::move(bus))
    , m_owners(kService, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    connect(&m_owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) {
            if (owner.isEmpty())
                vanished();
            else
                appeared();
        });
    notifyOfBusEnd(m_bus, this, SLOT(vanished()));
    ask();
}

KeyringWait::~KeyringWait()
{
    if (m_timer)
        m_clock.stopTimer(*m_timer);
}

/// Who has the name at first. What comes later is told without being asked.
void KeyringWait::ask()
{
    if (!m_bus.isConnected()) {
        vanished();
        return;
    }
    auto question = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"NameHasOwner"_s);
    question << kService;
    auto* const call = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<bool> isThere = *finished;
        if (m_isKnown)
            return;
        if (isThere.isValid() && isThere.value())
            appeared();
        else
            vanished();
    });
}

QCoro::Task<> KeyringWait::untilNextTry(Clock::duration pause, std::stop_token stop)
{
    co_await m_known.wait(stop);
    if (stop.stop_requested() || isOver())
        co_return;
    const JoinedStop either(std::move(stop), m_news.get_token());
    co_await m_clock.sleep(m_isServiceThere ? pause : m_limit, either.token());
}

void KeyringWait::appeared()
{
    m_isServiceThere = true;
    // Each of the two may take the wait with it.
    if (std::exchange(m_isKnown, true))
        std::exchange(m_news, std::stop_source()).request_stop();
    else
        m_known.end();
}

void KeyringWait::vanished()
{
    m_isServiceThere = false;
    m_isKnown = true;
    m_known.end();
}

void KeyringWait::end()
{
    m_timer.reset();
    // Each of the two may take this object with it.
    auto news = m_news;
    m_known.end();
    news.request_stop();
}

} // namespace orvella
