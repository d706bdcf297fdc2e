#include "platform/macos/MacViewerLocale.h"

#include "platform/macos/CocoaWorkspace.h"
#include "platform/macos/Texts.h"

namespace orvella {

MacViewerLocale::MacViewerLocale(const CocoaWorkspace& workspace)
    : m_workspace(workspace)
{
}

std::optional<QString> MacViewerLocale::languageCode() const
{
    return shared(m_workspace.languageCode());
}

QString MacViewerLocale::usDollars(qint64 cents) const
{
    constexpr double kCentsPerDollar = 100.0;
    const auto dollars = static_cast<double>(cents) / kCentsPerDollar;
    // The system's formatter may answer nothing, though nobody knows when it would.
    return shared(m_workspace.currencyText(dollars)).value_or(QStringLiteral("$%1").arg(dollars, 0, 'f', 2));
}

} // namespace orvella
