#include "base/Json.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <limits>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// Has the process write numbers as in German, with a locale made for the purpose.
class CommaLocale final {
public:
    CommaLocale()
    {
        QProcess::execute(
            u"localedef"_s, {u"-i"_s, u"de_DE"_s, u"-f"_s, u"UTF-8"_s, m_folder.filePath(u"de_DE.UTF-8"_s)});
        qputenv("LOCPATH", m_folder.path().toLocal8Bit());
        m_name = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    }

    CommaLocale(const CommaLocale&) = delete;
    CommaLocale& operator=(const CommaLocale&) = delete;

    ~CommaLocale()
    {
        std::setlocale(LC_NUMERIC, "C");
        qunsetenv("LOCPATH");
    }

    [[nodiscard]] bool isInUse() const { return m_name && *std::localeconv()->decimal_point == ','; }

private:
    QTemporaryDir m_folder;
    const char* m_name = nullptr;
};

} // namespace

class JsonTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void integersAreExactOverTheWholeRange_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<std::optional<qint64>>("expected");

        const auto row = [](const char* text, std::optional<qint64> expected) {
            QTest::newRow(text) << QByteArray(text) << expected;
        };
        row("0", 0);
        row("-0", 0);
        row("-0.0", 0);
        row("0e999999999999", 0);
        row("15", 15);
        row("15.0", 15);
        row("1.50e1", 15);
        row("1e2", 100);
        row("1E+2", 100);
        row("1500e-2", 15);
        row("-2.5e1", -25);
        row("9007199254740993.0", 9007199254740993);
        row("9223372036854775807", std::numeric_limits<qint64>::max());
        row("9223372036854775807.000", std::numeric_limits<qint64>::max());
        row("922337203685477580.7e1", std::numeric_limits<qint64>::max());
        row("-9223372036854775808", std::numeric_limits<qint64>::min());
        row("9223372036854775808", std::nullopt);
        row("-9223372036854775809", std::nullopt);
        row("18446744073709551615", std::nullopt);
        row("1e19", std::nullopt);
        row("15.5", std::nullopt);
        row("15.000000000000000000000001", std::nullopt);
        row("1e-1", std::nullopt);
        row("15e-2", std::nullopt);
        row("\"15\"", std::nullopt);
        row("true", std::nullopt);
        row("null", std::nullopt);
    }

    void integersAreExactOverTheWholeRange()
    {
        QFETCH(QByteArray, text);
        QFETCH(std::optional<qint64>, expected);

        const auto value = Json::parse(text);

        QVERIFY(value);
        QCOMPARE(value->integer(), expected);
    }

    void numbersReadTheSameWhereTheLocaleHasADecimalComma()
    {
        const CommaLocale locale;
        QVERIFY(locale.isInUse());

        QCOMPARE(Json::parse("12.5")->number(), 12.5);
        QCOMPARE(Json::parse("0.000125e3")->number(), 0.125);
        QCOMPARE(Json::parse("12.5")->integer(), std::nullopt);
        QCOMPARE(Json::parse("15.0")->integer(), 15);
        QCOMPARE(Json::parse("1.5e1")->integer(), 15);
        QCOMPARE(Json(12.5).serialise(), Result<QByteArray>("12.5"));
    }

    void everyNumberReadsAsANumber()
    {
        QCOMPARE(Json::parse("15")->number(), 15.0);
        QCOMPARE(Json::parse("15.5")->number(), 15.5);
        QCOMPARE(Json::parse("1e300")->number(), 1e300);
        QCOMPARE(Json::parse("true")->number(), std::nullopt);
    }

    void aTextThatIsNotJsonIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");

        for (const char* const text : {"", " ", "nul", "{", "[1,]", "{\"a\":1,}", "01", ".5", "2.", "'a'", "\"\x01\"",
                 "\"\\ud800\"", "\"\xff\"", "NaN", "[1] x", "1e999", "// c\n1"})
            QTest::addRow("%s", text) << QByteArray(text);
        QTest::newRow("a NUL byte after the value") << QByteArray("1\0", 2);
        QTest::newRow("nested too deeply")
            << QByteArray(Json::kGreatestDepth + 1, '[') + QByteArray(Json::kGreatestDepth + 1, ']');
        QTest::newRow("a megabyte of opened arrays") << QByteArray(1 << 20, '[');
    }

    void aTextThatIsNotJsonIsRefused()
    {
        QFETCH(QByteArray, text);

        const auto value = Json::parse(text);

        QVERIFY(!value);
        QCOMPARE(value.error().kind, Failure::Kind::undecodable);
    }

    void theGreatestDepthIsRead()
    {
        QVERIFY(Json::parse(QByteArray(Json::kGreatestDepth, '[') + QByteArray(Json::kGreatestDepth, ']')));
    }

    void ofEqualKeysTheLastOneCounts()
    {
        const auto value = Json::parse(R"({"a": 1, "a": 2})");

        QVERIFY(value);
        QCOMPARE(value->object()->at(u"a"_s).integer(), 2);
    }

    void onlyMembersThatAreLookedForAreKept()
    {
        const std::vector<std::string_view> keys {"a", "list", "inner"};

        const auto value =
            Json::parseOnly(R"({"x":1,"a":2,"inner":{"x":{"a":3},"a":4},"list":[{"x":5,"a":6},7],"ab":8,"":9})", keys);

        const Json::Object inner {{u"a"_s, qint64 {4}}};
        const Json::Object element {{u"a"_s, qint64 {6}}};
        const Json::Array list {Json(element), Json(qint64 {7})};
        const Json::Object expected {{u"a"_s, qint64 {2}}, {u"inner"_s, inner}, {u"list"_s, list}};
        QVERIFY(value.has_value());
        QCOMPARE(*value, Json(expected));
    }

    void aMemberAfterOneThatIsNotKeptIsKept()
    {
        const std::vector<std::string_view> keys {"a"};

        const auto value = Json::parseOnly(R"({"a":1,"x":{"y":[{"z":0}]},"a":2,"x":3})", keys);

        const Json::Object expected {{u"a"_s, qint64 {2}}};
        QVERIFY(value.has_value());
        QCOMPARE(*value, Json(expected));
    }

    void membersThatAreNotKeptAreJsonAllTheSame_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::newRow("no value") << QByteArray(R"({"x":})");
        QTest::newRow("a bare word") << QByteArray(R"({"x":[nil]})");
        QTest::newRow("not UTF-8") << QByteArray("{\"x\":\"\xff\"}");
        QTest::newRow("a key that is not UTF-8") << QByteArray("{\"\xff\":0}");
        QTest::newRow("too deep") << "{\"x\":" + QByteArray(Json::kGreatestDepth, '[')
                + QByteArray(Json::kGreatestDepth, ']') + '}';
    }

    void membersThatAreNotKeptAreJsonAllTheSame()
    {
        QFETCH(const QByteArray, text);

        QVERIFY(!Json::parseOnly(text, {}));
        QVERIFY(!Json::parse(text));
    }

    void aTextThatBeginsLikeAByteOrderMarkIsKept()
    {
        const auto json = Json::parse("\xef\xbb\xbf{\"\xef\xbb\xbfkey\": \"\\ufeffvalue\", \"key\": true}");

        const Json::Object expected {{u"\ufeffkey"_s, Json(u"\ufeffvalue"_s)}, {u"key"_s, Json(true)}};
        QCOMPARE(json, Result<Json>(Json(expected)));
        QCOMPARE(Json::parse(*json->serialise()), json);
    }

    void whatIsWrittenReadsBackEqual()
    {
        const Json value(Json::Object {
            {u"no"_s, Json(false)},
            {u"nothing"_s, Json()},
            {u"whole"_s, Json(std::numeric_limits<qint64>::min())},
            {u"part"_s, Json(0.1)},
            {u"text"_s, Json(u"\u00e4 \U0001f4b5 \" \\ \n \u0000"_s)},
            {u"list"_s, Json(Json::Array {Json(qint64 {1}), Json(Json::Object {})})},
        });

        const auto text = value.serialise();

        QVERIFY(text);
        QCOMPARE(Json::parse(*text), Result<Json>(value));
    }

    void theTextIsCompact()
    {
        const Json value(
            Json::Object {{u"b"_s, Json(Json::Array {Json(qint64 {1}), Json(u"x y"_s)})}, {u"a"_s, Json()}});

        QCOMPARE(value.serialise(), Result<QByteArray>(R"({"a":null,"b":[1,"x y"]})"));
    }

    void whatJsonCannotSayIsNotWritten()
    {
        QVERIFY(!Json(std::numeric_limits<double>::infinity()).serialise());
        QVERIFY(!Json(std::numeric_limits<double>::quiet_NaN()).serialise());
        QVERIFY(!Json(QString(QChar(0xd800))).serialise());
        QVERIFY(!Json(Json::Object {{QString(QChar(0xdc00)), Json()}}).serialise());
        QCOMPARE(Json(QString(QChar(0xd800))).serialise().error().kind, Failure::Kind::unencodable);
    }
};

QTEST_GUILESS_MAIN(JsonTest)

#include "JsonTest.moc"
