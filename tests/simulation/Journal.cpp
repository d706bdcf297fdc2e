#include "simulation/Journal.h"

#include <cstdio>

namespace orvella::simulation {

namespace {

// The hash FNV-1a.
constexpr quint64 kOffset = 0xcbf29ce484222325;
constexpr quint64 kPrime = 0x100000001b3;

constexpr std::size_t kKept = 60;

quint64 mixed(quint64 digest, quint64 value)
{
    return (digest ^ value) * kPrime;
}

/// "2d 03:04:05.678"
QString text(Clock::duration since)
{
    const auto milliseconds = std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
    const auto part = [](qint64 number, int digits) {
        return QStringLiteral("%1").arg(number, digits, 10, QChar(u'0'));
    };
    return QStringLiteral("%1d %2:%3:%4.%5")
        .arg(milliseconds / 86'400'000)
        .arg(part(milliseconds / 3'600'000 % 24, 2), part(milliseconds / 60'000 % 60, 2),
            part(milliseconds / 1000 % 60, 2), part(milliseconds % 1000, 3));
}

} // namespace

Journal::Journal(const Clock& clock, Telling telling)
    : m_clock(clock)
    , m_telling(telling)
    , m_start(clock.now())
    , m_digest(kOffset)
{
}

void Journal::note(const QString& event)
{
    ++m_events;
    heard(event);
    m_digest = mixed(m_digest, static_cast<quint64>((m_clock.now() - m_start).count()));
    for (const auto character : event)
        m_digest = mixed(m_digest, character.unicode());
    m_last.emplace_back(m_clock.now(), event);
    if (m_last.size() > kKept)
        m_last.pop_front();
    if (m_telling == Telling::always)
        std::puts(QStringLiteral("%1  %2").arg(text(m_clock.now() - m_start), event).toUtf8().constData());
}

void Journal::broken(const QString& rule)
{
    note(QStringLiteral("BROKEN: ") + rule);
    if (m_broken.isEmpty())
        m_broken = rule;
}

QStringList Journal::lastEvents() const
{
    QStringList lines;
    for (const auto& [at, event] : m_last)
        lines.append(QStringLiteral("%1  %2").arg(text(at - m_start), event));
    return lines;
}

} // namespace orvella::simulation
