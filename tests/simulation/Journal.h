#pragma once

#include "base/Clock.h"

#include <QString>
#include <QStringList>

#include <deque>
#include <functional>

namespace orvella::simulation {

/// What has happened, and the first thing that must not happen.
class Journal final {
public:
    enum class Telling { whenBroken, always };

    Journal(const Clock& clock, Telling telling);

    void note(const QString& event);
    /// A rule does not hold. The first one ends the simulation.
    void broken(const QString& rule);

    [[nodiscard]] bool isBroken() const { return !m_broken.isEmpty(); }
    [[nodiscard]] const QString& brokenRule() const { return m_broken; }

    /// The events before the first broken rule.
    [[nodiscard]] QStringList lastEvents() const;

    /// Two lives in which the same has happened at the same times have the same digest.
    [[nodiscard]] quint64 digest() const { return m_digest; }
    [[nodiscard]] qint64 events() const { return m_events; }

    /// Called with every event.
    std::function<void(const QString&)> heard = [](const QString& /*event*/) {};

private:
    const Clock& m_clock;
    Telling m_telling;
    Instant m_start;
    QString m_broken;
    quint64 m_digest;
    qint64 m_events = 0;
    std::deque<std::pair<Instant, QString>> m_last;
};

} // namespace orvella::simulation
