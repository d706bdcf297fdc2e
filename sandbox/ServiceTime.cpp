#include "sandbox/ServiceTime.h"

#include <QDateTime>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

QDateTime dateOf(Moment moment)
{
    return QDateTime::fromMSecsSinceEpoch(moment.time_since_epoch().count(), Qt::UTC);
}

} // namespace

ServiceTime::ServiceTime(const Clock& clock, Moment start)
    : m_clock(clock)
    , m_startInstant(clock.now())
    , m_start(start)
{
}

Moment ServiceTime::now() const
{
    return m_start + std::chrono::floor<std::chrono::milliseconds>(m_clock.now() - m_startInstant);
}

QString isoText(Moment moment)
{
    return dateOf(moment).toString(Qt::ISODateWithMs);
}

QString readableText(Moment moment)
{
    return dateOf(moment).toString(u"yyyy-MM-dd HH:mm"_s) + u" UTC"_s;
}

} // namespace orvella::sandbox
