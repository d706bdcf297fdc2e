#include "support/EveryRecord.h"

#include <QRegularExpression>
#include <QTest>

#include <limits>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kMegabyte = 1'000'000;
constexpr auto kGreatest = std::numeric_limits<qint64>::max();
constexpr auto kLeast = std::numeric_limits<qint64>::min();
const auto kNotJson = u"The service's answer could not be read: it is not JSON."_s;

using Integer = std::optional<qint64>;

/// What the service's own words would look like in what a viewer reads.
const auto kEvil = u"Evil<b>%1"_s;

Json evilValue(int type)
{
    switch (type) {
    case 0:
        return kEvil;
    case 1:
        return Json::Array {Json(kEvil), Json(Json::Object {{kEvil, kEvil}})};
    case 2:
        return Json::Object {{kEvil, Json(kEvil)}};
    default:
        return {};
    }
}

} // namespace

/// Every record that the service sends, with everything wrong that can be.
class HostileRecordsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void noByteOfTheAnswerIsInTheSentenceThatSaysWhatIsWrong()
    {
        const QRegularExpression plain(
            uR"(^The service's answer could not be read: data(\.[A-Za-z]+)+(\[\d+\])? [a-z ]+\.$)"_s);
        int refusals = 0;
        forEveryMember([&](const auto& record, const QString& key, auto) {
            for (int type = 0; type < 4; ++type) {
                const auto problem = problemWith(record, key, evilValue(type));
                if (problem.isEmpty())
                    continue;
                QVERIFY2(plain.match(problem).hasMatch(), qPrintable(problem));
                QVERIFY2(problem.size() <= 160, qPrintable(problem));
                ++refusals;
            }
        });
        QVERIFY(refusals > 100);
    }

    void unknownKeysAreIgnoredInEveryRecord()
    {
        forEveryMember([]<class T>(const T& record, const QString& key, auto) {
            const auto json = toJson(record);
            auto members = *json.object();
            for (const auto& other : {QString(), key.toUpper(), key + u' ', u'\0' + key, u"data."_s + key, kEvil})
                members.try_emplace(other, evilValue(2));

            const auto decoded = decodeRecord<APIResponse<T>>(replyOf(members));

            QVERIFY(decoded);
            QCOMPARE(toJson(decoded->data), json);
        });
    }

    void ofEqualKeysTheLastOneCounts()
    {
        forEveryMember([]<class T, class Member>(const T& record, const QString& key, Member T::*) {
            const auto good = toJson(record).serialise().value();
            const auto bad = '"' + key.toLatin1() + "\":\"1\"";
            if constexpr (!std::is_same_v<Member, QString> && !std::is_same_v<Member, Secret>) {
                const auto before = "{\"ok\":true,\"data\":{" + bad + ',' + good.sliced(1) + '}';
                const auto after = "{\"ok\":true,\"data\":" + good.chopped(1) + ',' + bad + "}}";
                const bool isOptionalAndAbsent = !toJson(record).object()->contains(key);
                QCOMPARE(decodeRecord<APIResponse<T>>(before).has_value(), !isOptionalAndAbsent);
                QVERIFY(!decodeRecord<APIResponse<T>>(after));
            }
        });
    }

    void everyTextMayBeAMegabyte()
    {
        int texts = 0;
        const auto megabyte = QString(kMegabyte - 1, u'x') + u'\u00e9';
        forEveryMember([&]<class T, class Member>(const T& record, const QString& key, Member T::* member) {
            if constexpr (std::is_same_v<Member, QString> || std::is_same_v<Member, QStringList>) {
                auto great = record;
                if constexpr (std::is_same_v<Member, QString>)
                    great.*member = megabyte;
                else
                    great.*member = QStringList {megabyte, megabyte};

                const auto decoded = decodeRecord<APIResponse<T>>(replyOf(toJson(great)));

                QVERIFY2(decoded, qPrintable(key));
                QVERIFY2(decoded->data.*member == great.*member, qPrintable(key));
                ++texts;
            }
        });
        QVERIFY(texts > 10);
    }

    void everyIntegerIsExactOrRefused_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<Integer>("expected");
        const auto row = [](const char* number, Integer expected) {
            QTest::newRow(number) << QByteArray(number) << expected;
        };
        row("0", 0);
        row("-0", 0);
        row("-0.0", 0);
        row("0e999999999", 0);
        row("1e18", 1'000'000'000'000'000'000);
        row("0.00000015e8", 15);
        row("15000e-3", 15);
        row("15001e-3", {});
        row("9007199254740993.0", 9'007'199'254'740'993);
        row("9223372036854775807", kGreatest);
        row("9223372036854775807.000", kGreatest);
        row("9.223372036854775807e18", kGreatest);
        row("92233720368547758070e-1", kGreatest);
        row("9223372036854775808", {});
        row("9.223372036854775808e18", {});
        row("9223372036854775807.5", {});
        row("-9223372036854775808", kLeast);
        row("-9.223372036854775808E+18", kLeast);
        row("-9223372036854775809", {});
        row("18446744073709551615", {});
        row("18446744073709551616", {});
        row("1e19", {});
        row("1e400", {});
        row("-1e400", {});
        row("1e-400", {});
        row("1e999999999999999999999", {});
        row("1e-999999999999999999999", {});
        QTest::newRow("a thousand zeros before it") << "0." + QByteArray(1000, '0') + "15e1002" << Integer(15);
        QTest::newRow("a thousand zeros behind it") << "15" + QByteArray(1000, '0') + "e-1000" << Integer(15);
        QTest::newRow("a thousand digits") << QByteArray(1000, '9') << Integer();
    }

    void everyIntegerIsExactOrRefused()
    {
        QFETCH(const QByteArray, number);
        QFETCH(const Integer, expected);
        int integers = 0;
        forEveryMember([&]<class T, class Member>(const T& record, const QString& key, Member T::* member) {
            if constexpr (std::is_same_v<Member, qint64>) {
                const auto good = replyOf(toJson(record));
                auto& value = record.*member;
                auto text = good;
                text.replace(
                    '"' + key.toLatin1() + "\":" + QByteArray::number(value), '"' + key.toLatin1() + "\":" + number);
                const auto decoded = decodeRecord<APIResponse<T>>(text);
                QCOMPARE(decoded ? Integer(decoded->data.*member) : Integer(), expected);
                ++integers;
            }
        });
        QVERIFY(integers > 10);
    }

    void everyFractionIsTheNearestOrRefused_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<std::optional<double>>("expected");
        const auto row = [](const char* number, std::optional<double> expected) {
            QTest::newRow(number) << QByteArray(number) << expected;
        };
        row("12", 12);
        row("12.5", 12.5);
        row("0.1", 0.1);
        row("-0.0", -0.0);
        row("1e-400", 0);
        row("5e-324", 5e-324);
        row("1.7976931348623157e308", std::numeric_limits<double>::max());
        row("18446744073709551616", 0x1p64);
        row("1e309", {});
        row("-1e309", {});
    }

    void everyFractionIsTheNearestOrRefused()
    {
        QFETCH(const QByteArray, number);
        QFETCH(const std::optional<double>, expected);
        const auto text =
            replyOf(toJson(anAd())).replace("\"viewerEarnCentsExact\":12.5", "\"viewerEarnCentsExact\":" + number);

        const auto decoded = decodeRecord<APIResponse<AvailableAd>>(text);

        QCOMPARE(decoded ? decoded->data.viewerEarnCentsExact : std::nullopt, expected);
    }

    void whatIsNoNumberInJsonIsNoAnswerAtAll_data()
    {
        QTest::addColumn<QByteArray>("number");
        for (const auto* const number : {"NaN", "nan", "Infinity", "-Infinity", "inf", "+1", "01", "-01", ".5", "1.",
                 "1e", "0x10", "1_000", "1,000", "1 000", "--1", "\xd9\xa1", "TRUE", "'1'", "undefined", ""})
            QTest::newRow(*number == '\0' ? "nothing" : number) << QByteArray(number);
    }

    void whatIsNoNumberInJsonIsNoAnswerAtAll()
    {
        QFETCH(const QByteArray, number);

        forEveryMember([&](const auto& record, const QString& key, auto) {
            QCOMPARE(problemWithBytes(record, key, number), kNotJson);
        });
    }
};

QTEST_GUILESS_MAIN(HostileRecordsTest)

#include "HostileRecordsTest.moc"
