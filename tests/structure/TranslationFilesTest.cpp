#include <QDir>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDir kFolder(QStringLiteral(ORVELLA_SOURCE_DIR) + u"/translations"_s);

struct Message {
    QString source;
    QString translation;
    bool isFinished = false;
};

struct Translation {
    QString language;
    std::vector<Message> messages;
};

Message readMessage(QXmlStreamReader& xml)
{
    Message message;
    while (xml.readNextStartElement()) {
        if (xml.name() == u"source"_s) {
            message.source = xml.readElementText();
        } else if (xml.name() == u"translation"_s) {
            message.isFinished = !xml.attributes().hasAttribute(u"type"_s);
            message.translation = xml.readElementText();
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

Translation readTranslation(const QString& fileName)
{
    QFile file(kFolder.filePath(fileName));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("A translation cannot be read.");
    QXmlStreamReader xml(&file);
    Translation translation;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == u"TS"_s)
            translation.language = xml.attributes().value(u"language"_s).toString();
        else if (xml.name() == u"message"_s)
            translation.messages.push_back(readMessage(xml));
    }
    if (xml.hasError())
        qFatal("%s: %s", qPrintable(fileName), qPrintable(xml.errorString()));
    return translation;
}

/// What of a text has to be in its translation too: the names in it once, the places of other texts each.
QStringList keptParts(const QString& text)
{
    static const QRegularExpression place(u"%[0-9]+"_s);
    static const QRegularExpression name(u"\\$ AD|\\$|Orvella|KEY=VALUE|--[a-z]+|-[hv]\\b|\\bDIR\\b|\\bJSON\\b"_s);
    QStringList names;
    for (const auto& match : name.globalMatch(text))
        names.append(match.captured());
    names.removeDuplicates();
    for (const auto& match : place.globalMatch(text))
        names.append(match.captured());
    names.sort();
    return names;
}

/// How a text ends, as far as a reader sees it.
QString ending(const QString& text)
{
    for (const auto& end : {u"\n"_s, u"..."_s, u"…"_s, u"."_s, u"。"_s, u":"_s}) {
        if (text.endsWith(end))
            return end == u"..."_s ? u"…"_s : end == u"。"_s ? u"."_s : end;
    }
    return {};
}

} // namespace

class TranslationFilesTest final : public QObject {
    Q_OBJECT

private:
    using Rule = bool (*)(const Message&);

    /// The messages of the row's file that break a rule, as a text for the viewer of the test.
    static QString breaking(Rule rule)
    {
        QFETCH(const QString, file);
        const auto messages = readTranslation(file).messages;
        if (messages.empty())
            return u"there are no messages"_s;
        QStringList wrong;
        for (const auto& message : messages) {
            if (!rule(message))
                wrong.append(message.source + u" -> "_s + message.translation);
        }
        return wrong.join(u'\n');
    }

    static void addFiles()
    {
        QTest::addColumn<QString>("file");
        for (const auto& file : kFolder.entryList({u"*.ts"_s}))
            QTest::newRow(qPrintable(file)) << file;
    }

private Q_SLOTS:
    void theFileIsCalledLikeItsLanguage_data() { addFiles(); }

    void theFileIsCalledLikeItsLanguage()
    {
        QFETCH(const QString, file);

        QCOMPARE(file, u"orvella_"_s + readTranslation(file).language + u".ts"_s);
    }

    void everyTextIsTranslated_data() { addFiles(); }

    void everyTextIsTranslated()
    {
        const auto wrong = breaking(
            [](const Message& message) { return message.isFinished && !message.translation.trimmed().isEmpty(); });

        QCOMPARE(wrong, QString());
    }

    void namesAndPlacesAreKept_data() { addFiles(); }

    void namesAndPlacesAreKept()
    {
        const auto wrong = breaking(
            [](const Message& message) { return keptParts(message.source) == keptParts(message.translation); });

        QCOMPARE(wrong, QString());
    }

    void aTranslationEndsAsItsText_data() { addFiles(); }

    void aTranslationEndsAsItsText()
    {
        const auto wrong =
            breaking([](const Message& message) { return ending(message.source) == ending(message.translation); });

        QCOMPARE(wrong, QString());
    }

    void noTranslationNamesTheSystem_data() { addFiles(); }

    /// The English texts name a Mac; a translation is read on every computer.
    void noTranslationNamesTheSystem()
    {
        const auto wrong = breaking([](const Message& message) {
            static const QRegularExpression system(u"\\bMac\\b|macOS|Sparkle"_s);
            return !message.translation.contains(system);
        });

        QCOMPARE(wrong, QString());
    }

    void theSameTextReadsTheSameEverywhere_data() { addFiles(); }

    void theSameTextReadsTheSameEverywhere()
    {
        QFETCH(const QString, file);

        QHash<QString, QString> seen;
        for (const auto& message : readTranslation(file).messages) {
            QCOMPARE(message.translation, seen.value(message.source, message.translation));
            seen.insert(message.source, message.translation);
        }
    }
};

QTEST_GUILESS_MAIN(TranslationFilesTest)

#include "TranslationFilesTest.moc"
