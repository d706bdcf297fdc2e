#pragma once

#include "base/Clock.h"
#include "platform/linux/secrets/SharedWait.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>

#include <optional>

namespace orvella {

/// One wait for a Secret Service that is not there yet, or is and fails. It watches who owns the service's bus name,
/// and ends after a limit; any number of flows share it.
class KeyringWait final : public QObject {
    Q_OBJECT

public:
    KeyringWait(Clock& clock, Clock::duration limit, QDBusConnection bus);
    ~KeyringWait() override;

    /// Waits until it makes sense to ask again: until the service comes, where it is not there, else for the pause.
    /// Ends early with the limit and when `stop` is requested.
    QCoro::Task<> untilNextTry(Clock::duration pause, std::stop_token stop);

    [[nodiscard]] bool isServiceThere() const { return m_isServiceThere; }

    /// The limit has passed.
    [[nodiscard]] bool isOver() const { return !m_timer; }

private Q_SLOTS:
    void vanished();

private:
    void ask();
    void appeared();
    void end();

    Clock& m_clock;
    Clock::duration m_limit;
    std::optional<Clock::TimerId> m_timer;
    QDBusConnection m_bus;
    QDBusServiceWatcher m_owners;
    /// The bus has said who has the name now.
    SharedWait m_known;
    bool m_isKnown = false;
    bool m_isServiceThere = false;
    /// Ends the pauses.
    std::stop_source m_news;
};

} // namespace orvella
