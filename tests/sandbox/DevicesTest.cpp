#include "sandbox/Devices.h"
#include "sandbox/Credentials.h"

#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Outcome = Devices::Linking::Outcome;

class DevicesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_devices.reset();
        m_database = *Database::open({});
        m_database->begin();
        m_devices.emplace(*m_database);
    }

    void cleanup() { QVERIFY(m_database->end()); }

    void aTokenHas256BitsAndIsNeverRepeated()
    {
        QSet<QByteArray> tokens;
        for (int count = 0; count < 100; ++count) {
            const auto token = makeToken().reveal();
            QCOMPARE(QByteArray::fromBase64(token, QByteArray::Base64UrlEncoding).size(), 32);
            tokens.insert(token);
        }

        QCOMPARE(tokens.size(), 100);
    }

    void aDeviceIsFoundByItsTokenAndByNoOther()
    {
        const auto first = m_devices->add(named(u"first"_s), kNow);
        const auto second = m_devices->add(named(u"second"_s), kNow);

        QCOMPARE(m_devices->findByToken(first.token)->id, first.device.id);
        QCOMPARE(m_devices->findByToken(second.token)->id, second.device.id);
        QVERIFY(!m_devices->findByToken(makeToken()));
        QVERIFY(!m_devices->findByToken(Secret()));
    }

    void theDatabaseHoldsOnlyTheHashOfAToken()
    {
        const auto registered = m_devices->add(named(u"desk"_s), kNow);

        const auto row = m_database->run(u"SELECT * FROM device"_s).front();

        auto hasHash = false;
        for (const auto& value : row) {
            QVERIFY(!value.toByteArray().contains(registered.token.reveal()));
            hasHash = hasHash || value.toByteArray() == hashOf(registered.token);
        }
        QVERIFY(hasHash);
    }

    void aCodeLooksLikeACode()
    {
        static const QRegularExpression kCode(u"\\A[2-9A-HJ-NP-Z]{4}-[2-9A-HJ-NP-Z]{4}\\z"_s);
        for (int count = 0; count < 100; ++count) {
            const auto code = makeActivationCode();
            QVERIFY2(kCode.match(code).hasMatch(), qPrintable(code));
            QCOMPARE(readActivationCode(code), std::optional(code));
        }
    }

    void aTypedCodeMayBeWrittenInAnyWay_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<std::optional<QString>>("expected");

        const auto row = [](const char* name, const QString& typed, std::optional<QString> expected) {
            QTest::newRow(name) << typed << expected;
        };
        row("as shown", u"ABCD-2345"_s, u"ABCD-2345"_s);
        row("small", u"abcd-2345"_s, u"ABCD-2345"_s);
        row("no hyphen", u"ABCD2345"_s, u"ABCD-2345"_s);
        row("blanks", u"  AB CD – 2345"_s.replace(u'–', u'-'), u"ABCD-2345"_s);
        row("too short", u"ABCD-234"_s, std::nullopt);
        row("too long", u"ABCD-23456"_s, std::nullopt);
        row("a letter that is in no code", u"ABCD-234O"_s, std::nullopt);
        row("empty", u""_s, std::nullopt);
    }

    void aTypedCodeMayBeWrittenInAnyWay()
    {
        QFETCH(QString, typed);
        QFETCH(std::optional<QString>, expected);

        QCOMPARE(readActivationCode(typed), expected);
    }

    void aCodeLinksItsDeviceToTheAccount()
    {
        const auto registered = m_devices->add(named(u"desk"_s), kNow);
        QVERIFY(!registered.device.isLinked());

        const auto linking = m_devices->link(registered.device.activationCode.toLower(), u"demo"_s, kNow);

        QVERIFY(linking.outcome == Outcome::linked);
        QCOMPARE(linking.device->id, registered.device.id);
        QCOMPARE(m_devices->find(registered.device.id)->viewer, u"demo"_s);
    }

    void anUnknownCodeLinksNothing()
    {
        const auto registered = m_devices->add(named(u"desk"_s), kNow);

        const auto linking = m_devices->link(u"ABCD-2345"_s, u"demo"_s, kNow);

        QVERIFY(linking.outcome == Outcome::unknownCode);
        QVERIFY(!m_devices->find(registered.device.id)->isLinked());
    }

    void aCodeIsUsedOnce()
    {
        const auto registered = m_devices->add(named(u"desk"_s), kNow);
        std::ignore = m_devices->link(registered.device.activationCode, u"demo"_s, kNow);

        const auto linking = m_devices->link(registered.device.activationCode, u"other"_s, kNow);

        QVERIFY(linking.outcome == Outcome::usedCode);
        QCOMPARE(m_devices->find(registered.device.id)->viewer, u"demo"_s);
    }

    void aCodeIsValidUntilAMillisecondBefore24Hours()
    {
        const auto registered = m_devices->add(named(u"desk"_s), kNow);

        QVERIFY(
            m_devices->link(registered.device.activationCode, u"demo"_s, kNow + 24h - 1ms).outcome == Outcome::linked);
    }

    void aCodeHasExpiredAfter24Hours()
    {
        const auto registered = m_devices->add(named(u"desk"_s), kNow);

        QVERIFY(
            m_devices->link(registered.device.activationCode, u"demo"_s, kNow + 24h).outcome == Outcome::expiredCode);
        QVERIFY(!m_devices->find(registered.device.id)->isLinked());
    }

    void whatADeviceTellsIsStored()
    {
        auto device = m_devices->add(named(u"desk"_s), kNow).device;
        device.settings = {false, true, true};
        device.language = u"de"_s;
        device.categories = {u"ai_tools"_s, u"design_tools"_s};
        device.seenAt = kNow + 5min;

        m_devices->update(device);

        const auto stored = m_devices->find(device.id);
        QVERIFY(stored->settings == device.settings);
        QCOMPARE(stored->language, u"de"_s);
        QCOMPARE(stored->categories, device.categories);
        QVERIFY(stored->seenAt == kNow + 5min);
        QVERIFY(stored->registeredAt == kNow);
    }

    void aNameIsStoredAsItIs()
    {
        const auto name = u"'; DROP TABLE device; -- \u0000 \U0001F5A5 \u05D0"_s;

        const auto registered = m_devices->add(named(name), kNow);

        QCOMPARE(m_devices->find(registered.device.id)->name, name);
    }

private:
    static Device named(const QString& name)
    {
        Device device;
        device.name = name;
        device.appVersion = u"0.1.0"_s;
        device.language = u"en"_s;
        return device;
    }

    static constexpr auto kNow = Moment(1'777'636'800'000ms);

    std::unique_ptr<Database> m_database;
    std::optional<Devices> m_devices;
};

QTEST_GUILESS_MAIN(DevicesTest)

#include "DevicesTest.moc"
