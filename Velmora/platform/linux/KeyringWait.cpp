#include "platform/linux/KeyringWait.h"

#include "platform/linux/JoinedStop.h"

#include <utility>

namespace orvella {

KeyringWait::KeyringWait(Clock& clock, Clock::duration limit)
    : m_clock(clock)
    , m_limit(limit)
    , m_timer(clock.startTimer(limit, [this] { end(); }))
    , m_watch(g_bus_watch_name(G_BUS_TYPE_SESSION, "org.freedesktop.secrets", G_BUS_NAME_WATCHER_FLAGS_NONE,
          &KeyringWait::appeared, &KeyringWait::vanished, this, nullptr))
{
}

KeyringWait::~KeyringWait()
{
    g_bus_unwatch_name(m_watch);
    if (m_timer)
        m_clock.stopTimer(*m_timer);
}

QCoro::Task<> KeyringWait::untilNextTry(Clock::duration pause, std::stop_token stop)
{
    co_await m_known.wait(stop);
    if (stop.stop_requested() || isOver())
        co_return;
    const JoinedStop either(std::move(stop), m_news.get_token());
    co_await m_clock.sleep(m_isServiceThere ? pause : m_limit, either.token());
}

void KeyringWait::appeared(GDBusConnection* bus, const char*, const char*, gpointer self)
{
    // GLib would end the program together with the bus.
    g_dbus_connection_set_exit_on_close(bus, FALSE);
    auto* const wait = static_cast<KeyringWait*>(self);
    wait->m_isServiceThere = true;
    // Each of the two may take the wait with it.
    if (std::exchange(wait->m_isKnown, true))
        std::exchange(wait->m_news, std::stop_source()).request_stop();
    else
        wait->m_known.end();
}

void KeyringWait::vanished(GDBusConnection*, const char*, gpointer self)
{
    auto* const wait = static_cast<KeyringWait*>(self);
    wait->m_isServiceThere = false;
    wait->m_isKnown = true;
    wait->m_known.end();
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
