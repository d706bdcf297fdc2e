#include "updates/PackageId.h"

#include <QStringList>

namespace orvella {

namespace {

// What a line of the window holds.
constexpr qsizetype kMostShown = 40;

} // namespace

std::optional<PackageId> PackageId::parse(const QString& text)
{
    const auto parts = text.split(u';');
    if (parts.size() != 4 || parts[0].isEmpty() || parts[1].isEmpty())
        return std::nullopt;
    return PackageId {text, parts[0], parts[1]};
}

QString PackageId::shownVersion() const
{
    auto shown = version.mid(version.indexOf(u':') + 1);
    const auto revision = shown.lastIndexOf(u'-');
    if (revision > 0)
        shown.truncate(revision);
    return shown.left(kMostShown);
}

QString PackageId::shownVersionBeside(const PackageId& other) const
{
    const auto shown = shownVersion();
    return shown == other.shownVersion() ? version.left(kMostShown) : shown;
}

} // namespace orvella
