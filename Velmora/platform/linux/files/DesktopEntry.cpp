#include "platform/linux/files/DesktopEntry.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// A desktop entry has a few kilobytes; whatever is larger is none.
constexpr qint64 kGreatestSize = 1 << 20;

/// Without the spaces around it, which do not count, and the end of a line as other systems have it. Other characters
/// that look like a space belong to a value.
QStringView stripped(QStringView text)
{
    const auto isPadding = [](QChar character) {
        return character == u' ' || character == u'\t' || character == u'\r';
    };
    while (!text.isEmpty() && isPadding(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isPadding(text.back()))
        text.chop(1);
    return text;
}

QString unescaped(const QString& value)
{
    QString text;
    text.reserve(value.size());
    for (qsizetype at = 0; at < value.size(); ++at) {
        if (value[at] != u'\\' || at + 1 == value.size()) {
            text += value[at];
            continue;
        }
        const auto escape = value[++at];
        if (escape == u's')
            text += u' ';
        else if (escape == u'n')
            text += u'\n';
        else if (escape == u't')
            text += u'\t';
        else if (escape == u'r')
            text += u'\r';
        else if (escape == u'\\')
            text += u'\\';
        else
            text += u'\\' + QString(escape);
    }
    return text;
}

/// Takes a word off the front: an argument of "Exec", which may be quoted or not.
QString takeWord(QStringView& rest)
{
    QString word;
    const bool isQuoted = rest.startsWith(u'"');
    if (isQuoted)
        rest = rest.sliced(1);
    while (!rest.isEmpty() && rest.front() != (isQuoted ? u'"' : u' ')) {
        if (isQuoted && rest.front() == u'\\' && rest.size() > 1)
            rest = rest.sliced(1);
        word += rest.front();
        rest = rest.sliced(1);
    }
    if (isQuoted && !rest.isEmpty())
        rest = rest.sliced(1);
    return word;
}

/// The suffixes that name a locale's translations, the closest one first.
QStringList suffixes(const QString& locale)
{
    const QRegularExpression form(u"^([A-Za-z]+)(_[A-Za-z0-9]+)?(?:\\.[^@]*)?(@.+)?\\z"_s);
    const auto match = form.match(locale);
    if (!match.hasMatch())
        return {};
    const auto language = match.captured(1);
    const auto country = match.captured(2);
    const auto modifier = match.captured(3);
    QStringList names;
    if (!country.isEmpty() && !modifier.isEmpty())
        names.append(language + country + modifier);
    if (!country.isEmpty())
        names.append(language + country);
    if (!modifier.isEmpty())
        names.append(language + modifier);
    names.append(language);
    return names;
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString& path)
{
    // A pipe would block.
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kGreatestSize)
        return std::nullopt;
    return parse(QString::fromUtf8(file.readAll()));
}

std::optional<DesktopEntry> DesktopEntry::parse(const QString& text)
{
    std::optional<DesktopEntry> entry;
    for (const auto line : QStringView(text).split(u'\n')) {
        const auto content = stripped(line);
        if (content.startsWith(u'[')) {
            if (entry)
                break;
            if (content == u"[Desktop Entry]")
                entry.emplace();
            continue;
        }
        const auto equals = content.indexOf(u'=');
        if (!entry || content.startsWith(u'#') || equals < 1)
            continue;
        const auto key = stripped(content.first(equals)).toString();
        entry->m_values.try_emplace(key, stripped(content.sliced(equals + 1)).toString());
    }
    return entry;
}

std::optional<QString> DesktopEntry::string(const QString& key) const
{
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::nullopt : std::optional(unescaped(found->second));
}

std::optional<QString> DesktopEntry::localized(const QString& key, const QString& locale) const
{
    for (const auto& suffix : suffixes(locale)) {
        if (auto value = string(key + u'[' + suffix + u']'))
            return value;
    }
    return string(key);
}

std::optional<bool> DesktopEntry::boolean(const QString& key) const
{
    const auto value = string(key);
    if (value == u"true"_s)
        return true;
    return value == u"false"_s ? std::optional(false) : std::nullopt;
}

QStringList DesktopEntry::list(const QString& key) const
{
    return string(key).value_or(QString()).split(u';', Qt::SkipEmptyParts);
}

QStringList DesktopEntry::command() const
{
    const auto value = string(u"Exec"_s).value_or(QString());
    QStringList words;
    for (auto rest = QStringView(value).trimmed(); !rest.isEmpty(); rest = rest.trimmed())
        words.append(takeWord(rest).replace(u"%%"_s, u"%"_s));
    return words;
}

QString DesktopEntry::escaped(QString value)
{
    value.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s).replace(u'\t', u"\\t"_s).replace(u'\r', u"\\r"_s);
    // A space at either end would be taken for padding.
    if (value.endsWith(u' '))
        value = value.chopped(1) + u"\\s"_s;
    return value.startsWith(u' ') ? u"\\s"_s + value.sliced(1) : value;
}

QString DesktopEntry::quotedArgument(const QString& argument)
{
    QString quoted;
    for (const auto character : argument) {
        if (u"\"`$\\"_s.contains(character))
            quoted += u'\\';
        quoted += character;
        // A lone percent sign would start a field code.
        if (character == u'%')
            quoted += u'%';
    }
    return u'"' + quoted + u'"';
}

} // namespace orvella
