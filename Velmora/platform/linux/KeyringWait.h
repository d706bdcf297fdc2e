#pragma once

#include "base/Clock.h"
#include "platform/linux/SharedWait.h"

#include <QCoroTask>

#include <gio/gio.h>

#include <optional>

namespace orvella {

/// One wait for a Secret Service that is not there yet, or is and fails. It watches who owns the service's bus name,
/// and ends after a limit; any number of flows share it.
class KeyringWait final {
public:
    KeyringWait(Clock& clock, Clock::duration limit);
    KeyringWait(const KeyringWait&) = delete;
    KeyringWait& operator=(const KeyringWait&) = delete;
    ~KeyringWait();

    /// Waits until it makes sense to ask again: until the service comes, where it is not there, else for the pause.
    /// Ends early with the limit and when `stop` is requested.
    QCoro::Task<> untilNextTry(Clock::duration pause, std::stop_token stop);

    [[nodiscard]] bool isServiceThere() const { return m_isServiceThere; }

    /// The limit has passed.
    [[nodiscard]] bool isOver() const { return !m_timer; }

private:
    static void appeared(GDBusConnection* bus, const char* name, const char* owner, gpointer self);
    static void vanished(GDBusConnection* bus, const char* name, gpointer self);

    void end();

    Clock& m_clock;
    Clock::duration m_limit;
    std::optional<Clock::TimerId> m_timer;
    guint m_watch = 0;
    /// The bus has said who has the name now.
    SharedWait m_known;
    bool m_isKnown = false;
    bool m_isServiceThere = false;
    /// Ends the pauses.
    std::stop_source m_news;
};

} // namespace orvella
