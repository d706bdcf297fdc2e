#include "api/Records.h"
#include "support/RecordJson.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

template <class T> QByteArray reply(const T& record)
{
    return replyOf(toJson(record));
}

template <class T> Result<APIResponse<T>> decode(const QByteArray& text)
{
    return decodeRecord<APIResponse<T>>(text);
}

/// What is wrong with a reply whose record has one member changed or, without a value, taken away.
template <class T> QString problem(const T& record, const QString& key, const std::optional<Json>& value)
{
    const auto json = toJson(record);
    auto members = *json.object();
    members.erase(key);
    if (value)
        members.insert_or_assign(key, *value);
    const auto decoded = decode<T>(replyOf(members));
    return decoded ? QString() : decoded.error().description;
}

// Which of the types of JSON a member takes.
QStringList takenBy(bool)
{
    return {u"boolean"_s};
}

QStringList takenBy(qint64)
{
    return {u"integer"_s};
}

QStringList takenBy(double)
{
    return {u"integer"_s, u"fraction"_s};
}

QStringList takenBy(const QString&)
{
    return {u"text"_s};
}

QStringList takenBy(const Secret&)
{
    return {u"text"_s};
}

QStringList takenBy(const QStringList&)
{
    return {u"texts"_s};
}

/// Every record has a member that must be there.
template <WireRecord T> QStringList takenBy(const T&)
{
    return {};
}

template <class T> QStringList takenBy(const std::optional<T>&)
{
    return takenBy(T());
}

/// Takes away, nulls and mistypes each member of the record in turn.
template <class T> void checkEveryMember(const T& record)
{
    const auto check = [&]<class Member>(const char* name, Member T::*) {
        constexpr bool kIsOptional = requires(Member member) { member.has_value(); };
        const auto key = QString::fromLatin1(name);
        const auto missing = problem(record, key, {});
        const auto null = problem(record, key, Json());
        QCOMPARE(missing.isEmpty(), kIsOptional);
        QCOMPARE(null.isEmpty(), kIsOptional);
        if (!kIsOptional) {
            QVERIFY2(missing.contains(u"data.%1 is missing"_s.arg(key)), qPrintable(missing));
            QVERIFY2(null.contains(u"data.%1 is not "_s.arg(key)), qPrintable(null));
        }

        const std::vector<std::pair<QString, Json>> values {{u"boolean"_s, true}, {u"integer"_s, qint64 {1}},
            {u"fraction"_s, 1.5}, {u"text"_s, u"text"_s}, {u"texts"_s, Json::Array {Json(u"text"_s)}},
            {u"mixed"_s, Json::Array {Json(u"text"_s), Json(true)}}, {u"object"_s, Json::Object {}}};
        QStringList accepted;
        for (const auto& [type, value] : values) {
            if (problem(record, key, value).isEmpty())
                accepted.append(type);
        }
        QVERIFY2(accepted == takenBy(Member()), qPrintable(key + u" takes "_s + accepted.join(u", "_s)));
    };
    std::apply([&](const auto&... fields) { (check(fields.key, fields.member), ...); }, T::fields());
}

} // namespace

class RecordsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyRecordReadsAsItWasSent()
    {
        QCOMPARE(toJson(decode<DeviceRegistration>(reply(aRegistration()))->data), toJson(aRegistration()));
        QCOMPARE(toJson(decode<WalletResponse>(reply(aWallet()))->data), toJson(aWallet()));
        QCOMPARE(decode<AvailabilityResponse>(reply(anOffer()))->data.ad, anAd());
        QCOMPARE(toJson(decode<AdSession>(reply(aSession()))->data), toJson(aSession()));
        QCOMPARE(toJson(decode<CompletionResponse>(reply(aCompletion()))->data), toJson(aCompletion()));
        QCOMPARE(toJson(decode<ClickResponse>(reply(aClick()))->data), toJson(aClick()));
    }

    void theKeysAreTheContract()
    {
        const QByteArray text = R"({"ok": true, "data": {
            "campaignId": "c", "creativeId": "k", "advertiserName": "n", "body": "b", "ctaLabel": "l",
            "targetUrl": "https://t.test", "language": "en", "requiredSeconds": 15, "matchedCategories": ["a", "b"],
            "advertiserChargeCents": 3, "viewerEarnCents": 2, "platformFeeCents": 1,
            "viewerEarnCentsExact": 2.5, "platformFeeCentsExact": 0.5}})";

        const auto ad = decode<AvailableAd>(text);

        QVERIFY(ad);
        QCOMPARE(ad->data,
            (AvailableAd {u"c"_s, u"k"_s, u"n"_s, u"b"_s, u"l"_s, u"https://t.test"_s, u"en"_s, 15, {u"a"_s, u"b"_s}, 3,
                2, 1, 2.5, 0.5}));
    }

    void theKeysOfEveryOtherRecordAreTheContractToo()
    {
        const auto registration = decode<DeviceRegistration>(R"({"ok": true, "data": {"deviceId": "d",
            "deviceToken": "t", "activationCode": "c", "verificationUri": "u", "pollSeconds": 60}})");
        QVERIFY(registration);
        QCOMPARE(toJson(registration->data), toJson(DeviceRegistration {u"d"_s, Secret("t"), u"c"_s, u"u"_s, 60}));

        const auto wallet = decode<WalletResponse>(R"({"ok": true, "data": {"linked": true, "wallet":
            {"pendingCents": 1, "availableCents": 2, "paidCents": 3, "lifetimeCents": 4}}})");
        QVERIFY(wallet);
        QCOMPARE(toJson(wallet->data), toJson(WalletResponse {true, {1, 2, 3, 4}}));

        const auto availability =
            decode<AvailabilityResponse>(R"({"ok": true, "data": {"available": true, "pollSeconds": 90, "ad": null}})");
        QVERIFY(availability);
        QCOMPARE(availability->data.pollSeconds, 90);
        QVERIFY(!availability->data.ad);

        const auto session = decode<AdSession>(R"({"ok": true, "data": {"sessionId": "s", "requiredSeconds": 9,
            "eligibleAfter": "later", "targetUrl": "u", "viewerEarnCents": 5}})");
        QVERIFY(session);
        QCOMPARE(toJson(session->data), toJson(AdSession {u"s"_s, 9, u"later"_s, u"u"_s, 5}));

        const auto completion = decode<CompletionResponse>(R"({"ok": true, "data": {"completed": true, "reason": "r",
            "viewerEarnCents": 5, "platformFeeCents": 4, "advertiserChargeCents": 9, "viewerEarnCentsExact": 5.25,
            "platformFeeCentsExact": 3.75}})");
        QVERIFY(completion);
        QCOMPARE(toJson(completion->data), toJson(CompletionResponse {true, u"r"_s, 5, 4, 9, 5.25, 3.75}));

        const auto click = decode<ClickResponse>(R"({"ok": true, "data": {"targetUrl": "u"}})");
        QVERIFY(click);
        QCOMPARE(click->data.targetUrl, u"u"_s);
    }

    void everyMemberIsRequiredTypedAndNamedInTheFailure()
    {
        checkEveryMember(aRegistration());
        checkEveryMember(aWallet());
        checkEveryMember(aWallet().wallet);
        checkEveryMember(anAd());
        checkEveryMember(anOffer());
        checkEveryMember(aSession());
        checkEveryMember(aCompletion());
        checkEveryMember(aClick());
    }

    void aFailureNamesThePathAndTheProblem_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("expected");

        QTest::newRow("deep") << QByteArray(R"({"ok":true,"data":{"linked":true,"wallet":{"pendingCents":1,
            "availableCents":"5","paidCents":0,"lifetimeCents":0}}})")
                              << u"data.wallet.availableCents is not an integer."_s;
        QTest::newRow("inner record missing")
            << QByteArray(R"({"ok":true,"data":{"linked":true}})") << u"data.wallet is missing."_s;
        QTest::newRow("inner record mistyped")
            << QByteArray(R"({"ok":true,"data":{"linked":true,"wallet":[]}})") << u"data.wallet is not an object."_s;
        QTest::newRow("no boolean") << QByteArray(R"({"ok":true,"data":{"linked":1,"wallet":{}}})")
                                    << u"data.linked is not true or false."_s;
        QTest::newRow("no envelope") << QByteArray("[]") << u"it is not an object."_s;
        QTest::newRow("no flag") << QByteArray(R"({"data":{}})") << u"ok is missing."_s;
        QTest::newRow("flag of another type")
            << QByteArray(R"({"ok":"yes","data":{}})") << u"ok is not true or false."_s;
        QTest::newRow("key in another case")
            << QByteArray(R"({"ok":true,"data":{"Linked":true,"wallet":{}}})") << u"data.linked is missing."_s;
    }

    void aFailureNamesThePathAndTheProblem()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, expected);

        const auto answer = decode<WalletResponse>(text);

        QVERIFY(!answer);
        QCOMPARE(answer.error().kind, Failure::Kind::undecodable);
        QVERIFY2(answer.error().description.endsWith(expected), qPrintable(answer.error().description));
    }

    void anElementOfAListIsNamedByItsPlace()
    {
        QVERIFY(problem(anAd(), u"matchedCategories"_s, Json::Array {Json(u"a"_s), Json(qint64 {1})})
                .contains(u"data.matchedCategories[1] is not a text"_s));
    }

    void anAdWithoutExactEarningsHasNone()
    {
        auto ad = anAd();
        ad.viewerEarnCentsExact.reset();

        const auto decoded = decode<AvailableAd>(reply(ad));

        QVERIFY(decoded);
        QVERIFY(!decoded->data.viewerEarnCentsExact);
    }

    void integersThatAreNotIntegralAreRefused_data()
    {
        QTest::addColumn<QByteArray>("number");
        QTest::addColumn<std::optional<qint64>>("expected");

        QTest::newRow("15") << QByteArray("15") << std::optional<qint64>(15);
        QTest::newRow("15.0") << QByteArray("15.0") << std::optional<qint64>(15);
        QTest::newRow("1e2") << QByteArray("1e2") << std::optional<qint64>(100);
        QTest::newRow("15.5") << QByteArray("15.5") << std::optional<qint64>();
        QTest::newRow("greatest") << QByteArray("9223372036854775807")
                                  << std::optional(std::numeric_limits<qint64>::max());
        QTest::newRow("beyond the greatest") << QByteArray("9223372036854775808") << std::optional<qint64>();
        QTest::newRow("least") << QByteArray("-9223372036854775808")
                               << std::optional(std::numeric_limits<qint64>::min());
        QTest::newRow("beyond the least") << QByteArray("-9223372036854775809") << std::optional<qint64>();
    }

    void integersThatAreNotIntegralAreRefused()
    {
        QFETCH(QByteArray, number);
        QFETCH(std::optional<qint64>, expected);
        auto text = reply(anAd());
        text.replace("\"requiredSeconds\":15", "\"requiredSeconds\":" + number);

        const auto decoded = decode<AvailableAd>(text);

        QCOMPARE(decoded.has_value(), expected.has_value());
        if (expected)
            QCOMPARE(decoded->data.requiredSeconds, *expected);
        else
            QVERIFY(decoded.error().description.contains(u"data.requiredSeconds is not an integer"_s));
    }

    void fractionsTakeEveryNumber()
    {
        for (const auto& number : {QByteArray("12"), QByteArray("12.5"), QByteArray("1.25e1")}) {
            auto text = reply(anAd());
            text.replace("\"viewerEarnCentsExact\":12.5", "\"viewerEarnCentsExact\":" + number);
            const auto decoded = decode<AvailableAd>(text);
            QVERIFY(decoded);
            QCOMPARE(decoded->data.viewerEarnCentsExact, number.toDouble());
        }
    }

    void anAnswerWithNothingButTheFlagIsNoOffer()
    {
        const auto decoded = decode<AvailabilityResponse>(R"({"ok":true,"data":{"available":true}})");

        QVERIFY(decoded);
        QVERIFY(decoded->data.available);
        QVERIFY(!decoded->data.ad);
        QVERIFY(!decoded->data.pollSeconds);
    }

    void anOfferWithABrokenAdIsNoAnswerAtAll()
    {
        const auto decoded = decode<AvailabilityResponse>(R"({"ok":true,"data":{"available":true,"ad":{}}})");

        QVERIFY(!decoded);
        QVERIFY(decoded.error().description.contains(u"data.ad.campaignId is missing"_s));
    }

    void unknownKeysAreIgnoredEverywhere()
    {
        const auto decoded = decode<WalletResponse>(R"({"ok":true,"more":1,"data":{"linked":false,"more":{},
            "wallet":{"pendingCents":1,"availableCents":2,"paidCents":3,"lifetimeCents":4,"more":[]}}})");

        QVERIFY(decoded);
        QCOMPARE(decoded->data.wallet.lifetimeCents, 4);
    }

    void aRecordWithoutMembersTakesAnythingButMustBeThere()
    {
        for (const auto* const data : {"{}", "{\"x\":1}", "null", "5", "\"text\"", "[]"})
            QVERIFY2(decode<EmptyPayload>(QByteArray("{\"ok\":true,\"data\":") + data + "}"), data);
        QVERIFY(!decode<EmptyPayload>(R"({"ok":true})"));
        QVERIFY(decode<EmptyPayload>(R"({"ok":true})").error().description.contains(u"data is missing"_s));
    }
};

QTEST_GUILESS_MAIN(RecordsTest)

#include "RecordsTest.moc"
