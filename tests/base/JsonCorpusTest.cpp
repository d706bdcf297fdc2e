#include "base/Json.h"

#include "support/Corpus.h"

#include <QTest>

#include <limits>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// How deeply arrays and objects are nested in a valid text.
int depthOf(const QByteArray& text)
{
    int depth = 0;
    int greatest = 0;
    bool isInString = false;
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at] == '"')
            isInString = !isInString;
        else if (isInString)
            at += text[at] == '\\' ? 1 : 0;
        else if (text[at] == '[' || text[at] == '{')
            greatest = std::max(greatest, ++depth);
        else if (text[at] == ']' || text[at] == '}')
            --depth;
    }
    return greatest;
}

Json arrayOf(Json value)
{
    return Json(Json::Array {std::move(value)});
}

/// What this program makes of the texts that parsers are known to disagree on; nothing where it refuses one.
const std::map<QString, std::optional<Json>>& knownValues()
{
    static const std::map<QString, std::optional<Json>> kKnown {
        {u"number_-9223372036854775808.json"_s, arrayOf(Json(std::numeric_limits<qint64>::min()))},
        {u"number_-9223372036854775809.json"_s, arrayOf(Json(-0x1p63))},
        {u"number_1.0.json"_s, arrayOf(Json(qint64 {1}))},
        {u"number_1.000000000000000005.json"_s, arrayOf(Json(1.0))},
        {u"number_1000000000000000.json"_s, arrayOf(Json(qint64 {1000000000000000}))},
        {u"number_10000000000000000999.json"_s, arrayOf(Json(1e19))},
        {u"number_1e-999.json"_s, arrayOf(Json(0.0))},
        {u"number_1e6.json"_s, arrayOf(Json(qint64 {1000000}))},
        {u"number_9223372036854775807.json"_s, arrayOf(Json(std::numeric_limits<qint64>::max()))},
        {u"number_9223372036854775808.json"_s, arrayOf(Json(0x1p63))},
        {u"object_key_nfc_nfd.json"_s,
            Json(Json::Object {{u"\u00e9"_s, Json(u"NFC"_s)}, {u"e\u0301"_s, Json(u"NFD"_s)}})},
        {u"object_same_key_different_values.json"_s, Json(Json::Object {{u"a"_s, Json(qint64 {2})}})},
        {u"object_same_key_same_value.json"_s, Json(Json::Object {{u"a"_s, Json(qint64 {1})}})},
        {u"object_same_key_unclear_values.json"_s, Json(Json::Object {{u"a"_s, Json(qint64 {0})}})},
        {u"string_1_invalid_codepoint.json"_s, std::nullopt},
        {u"string_2_invalid_codepoints.json"_s, std::nullopt},
        {u"string_3_invalid_codepoints.json"_s, std::nullopt},
    };
    return kKnown;
}

} // namespace

class JsonCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyTextHasTheOutcomeThatItsNameSays_data()
    {
        QTest::addColumn<QString>("file");

        for (const auto& name : Corpus::filesIn(u"json/test_parsing"_s))
            QTest::newRow(qUtf8Printable(name)) << name;
    }

    void everyTextHasTheOutcomeThatItsNameSays()
    {
        QFETCH(QString, file);
        const auto text = Corpus::file(u"json/test_parsing/"_s + file);

        const auto value = Json::parse(text);

        // Undecided texts may go either way, but always the same way.
        QCOMPARE(Json::parse(text), value);
        if (file.startsWith(u"y_"))
            QCOMPARE(value.has_value(), depthOf(text) <= Json::kGreatestDepth);
        else if (file.startsWith(u"n_"))
            QVERIFY(!value);
        else
            QVERIFY(file.startsWith(u"i_"));
    }

    void whatWasReadCanBeWrittenAndReadsBackEqual_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<bool>("isExact");

        for (const auto& folder : {u"json/test_parsing/"_s, u"json/test_transform/"_s}) {
            for (const auto& name : Corpus::filesIn(folder)) {
                const auto text = Corpus::file(folder + name);
                if (Json::parse(text))
                    QTest::newRow(qUtf8Printable(name)) << text << name.startsWith(u"y_");
            }
        }
    }

    void whatWasReadCanBeWrittenAndReadsBackEqual()
    {
        QFETCH(QByteArray, text);
        QFETCH(bool, isExact);
        const auto value = Json::parse(text);

        const auto written = value->serialise();

        QVERIFY(written);
        const auto again = Json::parse(*written);
        QVERIFY(again);
        // What no double can hold, 1e-999 for example, is a rounded number at first and the integer 0 from then on.
        if (isExact)
            QCOMPARE(again, value);
        QCOMPARE(Json::parse(*again->serialise()), again);
    }

    void disputedTextsReadAsStated_data()
    {
        QTest::addColumn<QString>("file");

        for (const auto& name : Corpus::filesIn(u"json/test_transform"_s))
            QTest::newRow(qUtf8Printable(name)) << name;
    }

    void disputedTextsReadAsStated()
    {
        QFETCH(QString, file);
        const auto text = Corpus::file(u"json/test_transform/"_s + file);

        const auto value = Json::parse(text);

        QCOMPARE(Json::parse(text), value);
        const auto known = knownValues().find(file);
        if (known != knownValues().end())
            QCOMPARE(value ? std::optional(*value) : std::nullopt, known->second);
    }
};

QTEST_GUILESS_MAIN(JsonCorpusTest)

#include "JsonCorpusTest.moc"
