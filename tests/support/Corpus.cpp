#include "support/Corpus.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <arpa/inet.h>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

QString pathOf(const QString& name)
{
    const auto folder = qEnvironmentVariable("ORVELLA_CORPORA");
    if (folder.isEmpty())
        qFatal("ORVELLA_CORPORA does not name the folder with the test material.");
    return folder + u'/' + name;
}

/// The text with halves of surrogate pairs replaced: some material has them, and they are no JSON for the program.
QByteArray withoutLoneSurrogates(const QByteArray& text)
{
    const QRegularExpression lone(u"\\\\u[dD][89abAB][0-9a-fA-F]{2}(?!\\\\u[dD][c-fC-F])"
                                  u"|(?<!\\\\u[dD][89abAB][0-9a-fA-F]{2})\\\\u[dD][c-fC-F][0-9a-fA-F]{2}"_s);
    return QString::fromUtf8(text).replace(lone, u"\\ufffd"_s).toUtf8();
}

} // namespace

QByteArray Corpus::file(const QString& name)
{
    QFile file(pathOf(name));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read.", qUtf8Printable(file.fileName()));
    return file.readAll();
}

Json Corpus::json(const QString& name)
{
    auto value = Json::parse(withoutLoneSurrogates(file(name)));
    if (!value)
        qFatal("%s is not JSON.", qUtf8Printable(name));
    return std::move(*value);
}

QStringList Corpus::filesIn(const QString& folder)
{
    auto names = QDir(pathOf(folder)).entryList(QDir::Files, QDir::Name);
    if (names.isEmpty())
        qFatal("There are no files in %s.", qUtf8Printable(folder));
    return names;
}

QStringList Corpus::hostileStrings()
{
    const auto name = u"strings/blns-part.json"_s;
    const auto table = json(name);
    QStringList strings;
    for (const auto& entry : *table.array())
        strings.append(*entry.string());
    if (strings.size() <= 100)
        qFatal("There are too few strings in %s.", qUtf8Printable(name));
    return strings;
}

const Json& Corpus::member(const Json& record, const QString& key)
{
    static const Json kNone;
    const auto* const members = record.object();
    const auto found = members != nullptr ? members->find(key) : Json::Object::const_iterator();
    return members == nullptr || found == members->end() ? kNone : found->second;
}

QString Corpus::text(const Json& record, const QString& key)
{
    const auto* const string = member(record, key).string();
    return string != nullptr ? *string : QString();
}

QString Corpus::hostIn(const QString& text)
{
    const auto isBracketed = text.startsWith(u'[') && text.endsWith(u']');
    const auto host = (isBracketed ? text.sliced(1, text.size() - 2) : text).toLower();
    in6_addr address {};
    if (::inet_pton(AF_INET6, host.toLatin1().constData(), &address) != 1)
        return host;
    return QString::fromLatin1(QByteArray(reinterpret_cast<const char*>(&address), sizeof address).toHex(':'));
}

} // namespace orvella
