#include "platform/macos/MacSystemReport.h"

#include "platform/macos/CocoaUpdater.h"

#include <QSysInfo>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

MacSystemReport::MacSystemReport(const CocoaUpdater& updater)
    : m_updater(updater)
{
}

std::vector<SystemReport::Fact> MacSystemReport::facts() const
{
    return {
        {u"system"_s, QSysInfo::prettyProductName()},
        {u"processor"_s, QSysInfo::currentCpuArchitecture()},
        {u"updater"_s, m_updater.isThere() ? u"in the bundle"_s : u"not in the bundle"_s},
        {u"toolkit"_s, u"Qt "_s + QString::fromLatin1(qVersion())},
    };
}

} // namespace orvella
