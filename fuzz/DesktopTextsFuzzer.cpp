#include "Claim.h"
#include "platform/linux/applications/ApplicationUnitName.h"
#include "platform/linux/files/DesktopEntry.h"
#include "platform/linux/look/XSettings.h"
#include "support/XSettingsBytes.h"

#include <QRegularExpression>

#include <fuzzer/FuzzedDataProvider.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

// --- desktop entries

bool areSame(const DesktopEntry& entry, const DesktopEntry& other)
{
    for (const auto& key :
        {u"Type"_s, u"Name"_s, u"Name[de]"_s, u"Exec"_s, u"TryExec"_s, u"Hidden"_s, u"OnlyShowIn"_s}) {
        if (entry.string(key) != other.string(key) || entry.list(key) != other.list(key))
            return false;
    }
    return entry.command() == other.command();
}

void anEntryIsItsMainGroup(const QString& text)
{
    const auto entry = DesktopEntry::parse(text);
    if (!entry)
        return;
    const auto followed = DesktopEntry::parse(text + u"\n[Desktop Action a]\nName=a\nExec=a\nType=a\nHidden=a\n"_s);
    claim(followed && areSame(*entry, *followed), "another group changes nothing");
    const auto repeated = DesktopEntry::parse(text + u"\n[Desktop Entry]\nName=a\nExec=a\nType=a\nHidden=a\n"_s);
    claim(repeated && areSame(*entry, *repeated), "the same group again changes nothing");
    const auto commented = DesktopEntry::parse(u"# [Desktop Entry]\n\n"_s + text);
    claim(commented && areSame(*entry, *commented), "a comment in front changes nothing");
    claim(
        entry->localized(u"Name"_s, u"C"_s) == entry->string(u"Name"_s), "without a language there is the plain name");
    claim(entry->localized(u"Name"_s, u"de_AT"_s) == entry->string(u"Name[de_AT]"_s)
            || entry->localized(u"Name"_s, u"de_AT"_s) == entry->string(u"Name[de]"_s)
            || entry->localized(u"Name"_s, u"de_AT"_s) == entry->string(u"Name"_s),
        "the name is one of those that the entry has");
    const auto hidden = entry->string(u"Hidden"_s);
    claim((entry->boolean(u"Hidden"_s) == true) == (hidden == u"true"_s), "only \"true\" is true");
    for (const auto& desktop : entry->list(u"OnlyShowIn"_s))
        claim(!desktop.isEmpty() && !desktop.contains(u';'), "a list has no empty element");
}

/// What the program writes into an entry is read as it was, whatever its own path is.
void whatIsWrittenIntoAnEntryIsReadBack(const QString& text)
{
    const auto words = text.split(u'\0');
    QStringList quoted;
    for (const auto& word : words)
        quoted.append(DesktopEntry::quotedArgument(word));
    const auto entry = DesktopEntry::parse(u"[Desktop Entry]\nTryExec="_s + DesktopEntry::escaped(words.constFirst())
        + u"\nExec="_s + DesktopEntry::escaped(quoted.join(u' ')) + u'\n');

    claim(entry.has_value(), "what was written is an entry");
    claim(entry->string(u"TryExec"_s) == words.constFirst(), "a value that was escaped is read as it was");
    claim(entry->command() == words, "arguments that were quoted are read as they were");
}

// --- the names of units

/// As systemd.unit(5) has it: a slash becomes a dash only in paths, which IDs are not.
QString escapedForUnit(const QString& id)
{
    QString escaped;
    for (const auto byte : id.toUtf8()) {
        const bool isPlain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z')
            || (byte >= '0' && byte <= '9') || byte == ':' || byte == '_' || byte == '.';
        escaped += isPlain ? QString(QLatin1Char(byte)) : u"\\x"_s + QString::fromLatin1(QByteArray(1, byte).toHex());
    }
    return escaped;
}

void aUnitNamesItsApplication(const QString& text)
{
    if (text.isEmpty())
        return;
    const auto id = escapedForUnit(text);
    for (const auto& unit : {u"app-gnome-"_s + id + u"-12.scope"_s, u"app-"_s + id + u"-12.scope"_s,
             u"app-"_s + id + u"@12.service"_s, u"app-"_s + id + u".slice"_s, u"dbus-:1.2-"_s + id + u"@0.service"_s})
        claim(possibleApplicationIds(unit).value(0) == text, "an ID that was escaped is read as it was");
    claim(possibleApplicationIds(u"app-"_s + id + u"@autostart.service"_s).isEmpty(),
        "what the session started is left out");
}

/// Whatever is no escape by the manual stands for itself.
QString unescapedFromUnit(const QString& text)
{
    static const QRegularExpression escape(u"\\\\x([0-9a-fA-F]{2})"_s);
    // One character for each byte.
    const auto escaped = QString::fromLatin1(text.toUtf8());
    QByteArray bytes;
    qsizetype at = 0;
    for (const auto& match : escape.globalMatch(escaped)) {
        bytes += escaped.sliced(at, match.capturedStart() - at).toLatin1()
            + QByteArray::fromHex(match.captured(1).toLatin1());
        at = match.capturedEnd();
    }
    return QString::fromUtf8(bytes + escaped.sliced(at).toLatin1());
}

void onlyWhatIsEscapedIsResolved(QString text)
{
    text.remove(u'@').remove(u'-').remove(u'\n');
    if (!text.isEmpty())
        claim(possibleApplicationIds(u"app-"_s + text + u"-12.scope"_s).value(0) == unescapedFromUnit(text),
            "only what is escaped is resolved");
}

void anyUnitIsReadOrLeftOut(const QString& unit)
{
    const auto ids = possibleApplicationIds(unit);
    const bool isApplication = unit.startsWith(u"app-"_s) || unit.startsWith(u"dbus-"_s) || unit.startsWith(u"snap."_s);
    claim(ids.isEmpty() || isApplication, "only applications have IDs");
    for (const auto& id : ids)
        claim(id.size() < unit.size(), "an ID is a part of the unit's name");
}

// --- XSettings

std::vector<XSettingsBytes::Setting> settingsIn(const XSettings& settings)
{
    std::vector<XSettingsBytes::Setting> list;
    for (auto setting = settings.constBegin(); setting != settings.constEnd(); ++setting) {
        if (const auto* const number = std::get_if<qint32>(&setting.value()))
            list.emplace_back(setting.key(), *number);
        else
            list.emplace_back(setting.key(), std::get<QByteArray>(setting.value()));
    }
    return list;
}

void settingsReadTheSameInBothOrders(const XSettings& settings, qsizetype length)
{
    for (const auto order : {XSettingsBytes::Order::littleEndian, XSettingsBytes::Order::bigEndian}) {
        const auto bytes = XSettingsBytes::of(settingsIn(settings), order);
        claim(parseXSettings(bytes) == settings, "settings that were written read the same");
        claim(!parseXSettings(bytes.first(length % bytes.size())), "a part of them is not read");
    }
    const auto wishes = xSettingsWishes(settings);
    claim(wishes.textScale == 1, "they say nothing of the size of text");
}

XSettings drawnSettings(FuzzedDataProvider& bytes)
{
    XSettings settings;
    while (bytes.remaining_bytes() > 0) {
        const auto name = QByteArray::fromStdString(bytes.ConsumeRandomLengthString());
        if (bytes.ConsumeBool())
            settings.insert(name, bytes.ConsumeIntegral<qint32>());
        else
            settings.insert(name, QByteArray::fromStdString(bytes.ConsumeRandomLengthString()));
    }
    return settings;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const auto text = QString::fromUtf8(bytes);
    anEntryIsItsMainGroup(text);
    whatIsWrittenIntoAnEntryIsReadBack(text);
    constexpr int kLongestFileName = 255;
    if (size <= kLongestFileName) {
        anyUnitIsReadOrLeftOut(text);
        aUnitNamesItsApplication(text);
        onlyWhatIsEscapedIsResolved(text);
    }
    if (const auto settings = parseXSettings(bytes))
        settingsReadTheSameInBothOrders(*settings, bytes.size());
    FuzzedDataProvider provider(data, size);
    settingsReadTheSameInBothOrders(drawnSettings(provider), bytes.size());
    return 0;
}
