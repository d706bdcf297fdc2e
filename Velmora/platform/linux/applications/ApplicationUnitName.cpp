#include "platform/linux/applications/ApplicationUnitName.h"

#include <QRegularExpression>

#include <optional>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The value of two hexadecimal digits; nothing where there are others.
std::optional<char> byteOf(const QByteArray& digits)
{
    const auto bytes = QByteArray::fromHex(digits);
    return bytes.size() == 1 && bytes.toHex() == digits.toLower() ? std::optional(bytes.front()) : std::nullopt;
}

/// Resolves the escapes of systemd.unit(5), "\x2d" for a dash.
QString unescaped(const QString& text)
{
    const auto escaped = text.toUtf8();
    QByteArray bytes;
    for (qsizetype at = 0; at < escaped.size(); ++at) {
        const auto byte =
            QByteArrayView(escaped).sliced(at).startsWith("\\x") ? byteOf(escaped.mid(at + 2, 2)) : std::nullopt;
        bytes += byte.value_or(escaped[at]);
        at += byte ? 3 : 0;
    }
    return QString::fromUtf8(bytes);
}

/// The ways to read "[LAUNCHER-]ID". By the rules an ID has no dash of its own, so its last part comes first.
QStringList readings(const QStringList& parts)
{
    if (parts.isEmpty())
        return {};
    QStringList ids {unescaped(parts.last())};
    for (qsizetype first = 0; first + 1 < parts.size(); ++first)
        ids.append(unescaped(parts.sliced(first).join(u'-')));
    return ids;
}

/// Of "[LAUNCHER-]ID-RANDOM".
QStringList readingsBeforeRandom(const QStringList& parts)
{
    return readings(parts.first(parts.size() - 1));
}

QStringList idsOfSnap(const QString& unit)
{
    static const QRegularExpression form(
        u"^snap\\.([^.]+)\\.([^.]+)[.-][0-9a-f]{8}(?:-[0-9a-f]{4}){3}-[0-9a-f]{12}\\.scope\\z"_s);
    const auto match = form.match(unit);
    return match.hasMatch() ? QStringList {match.captured(1) + u'_' + match.captured(2)} : QStringList();
}

/// An application that is activated over D-Bus has its ID as its name there.
QStringList idsOfActivation(const QString& unit)
{
    static const QRegularExpression form(u"^dbus-:[0-9.]+-([^@]+)(?:@[^@]*)?\\.service\\z"_s);
    const auto match = form.match(unit);
    return match.hasMatch() ? QStringList {unescaped(match.captured(1))} : QStringList();
}

} // namespace

QStringList possibleApplicationIds(const QString& unit)
{
    if (unit.startsWith(u"snap."))
        return idsOfSnap(unit);
    if (unit.startsWith(u"dbus-"))
        return idsOfActivation(unit);
    static const QRegularExpression form(u"^app-([^@]+)(?:@(.*))?\\.(scope|service|slice)\\z"_s);
    const auto match = form.match(unit);
    if (!match.hasMatch() || match.captured(2) == u"autostart")
        return {};
    const auto parts = match.captured(1).split(u'-');
    if (match.captured(3) == u"scope")
        return readingsBeforeRandom(parts);
    // A service has its random part behind an "@", or none, or it has the dash of a scope all the same.
    return match.hasCaptured(2) ? readings(parts) : readings(parts) + readingsBeforeRandom(parts);
}

} // namespace orvella
