#include "app/Diagnosis.h"

#include "app/RecentErrors.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Outcome.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Finding = SecretStore::Finding;

struct World {
    FakePlatform platform;
    FakeTransport transport;
    bool isAnyRunning = false;

    [[nodiscard]] QString text(const RecentErrors* errors = nullptr)
    {
        const auto outcome = Outcome<QString>(errors != nullptr ? Diagnosis::ofRunning(platform.lend(), *errors)
                                                                : Diagnosis::ofOther(platform.lend(), isAnyRunning));
        settle();
        if (!outcome.isThere())
            qFatal("The diagnosis still waits.");
        return *outcome;
    }

    [[nodiscard]] QString value(const QString& name, const RecentErrors* errors = nullptr)
    {
        const auto lines = text(errors).split(u'\n');
        for (const auto& line : lines) {
            if (line.startsWith(name + u": "_s))
                return line.sliced(name.size() + 2);
        }
        return u"(no line)"_s;
    }
};

} // namespace

class DiagnosisTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theVersionComesFirst()
    {
        World world;

        QVERIFY(world.text().startsWith(u"Orvella: 0."_s));
        QVERIFY(world.text().endsWith(u'\n'));
    }

    void whatTheSystemReportsIsPassedOn()
    {
        World world;
        world.platform.report.told = {{u"desktop"_s, u"XFCE"_s}, {u"proxies"_s, u"none"_s}};

        QCOMPARE(world.value(u"desktop"_s), u"XFCE"_s);
        QCOMPARE(world.value(u"proxies"_s), u"none"_s);
    }

    void theKeyringsAnswersAreToldApart_data()
    {
        QTest::addColumn<Finding>("finding");
        QTest::addColumn<QString>("told");

        QTest::newRow("an item") << Finding::item << u"has the device's token"_s;
        QTest::newRow("no item") << Finding::noItem << u"has no token"_s;
        QTest::newRow("locked") << Finding::locked << u"is locked"_s;
        QTest::newRow("refused") << Finding::refused << u"is locked, and the viewer did not want to unlock it"_s;
        QTest::newRow("absent") << Finding::absent << u"does not answer, or there is none"_s;
    }

    void theKeyringsAnswersAreToldApart()
    {
        QFETCH(const Finding, finding);
        QFETCH(const QString, told);
        World world;
        world.platform.secrets.finding = finding;

        QCOMPARE(world.value(u"keyring"_s), told);
    }

    void theCurrentTokenIsLookedFor()
    {
        World world;
        world.platform.secrets.put(u"quillon.device-token"_s, "token-1");
        QCOMPARE(world.value(u"keyring"_s), u"has no token"_s);

        world.platform.secrets.put(u"orvella.device-token"_s, "token-1");
        QCOMPARE(world.value(u"keyring"_s), u"has the device's token"_s);
    }

    void theFactsOfTheGuardAndItsVerdictAreThere()
    {
        World world;
        QCOMPARE(world.value(u"screen locked"_s), u"unknown"_s);
        QCOMPARE(world.value(u"an ad may open by itself"_s), u"yes"_s);

        world.platform.foreground.locked = true;
        QCOMPARE(world.value(u"screen locked"_s), u"yes"_s);
        QCOMPARE(world.value(u"screen covered"_s), u"no"_s);
        QCOMPARE(world.value(u"an ad may open by itself"_s), u"no"_s);

        world.platform.foreground.locked = false;
        world.platform.foreground.front = 7;
        world.platform.foreground.onScreen = std::vector {ScreenWindow {7, 0, QSizeF(1440, 900)}};
        QCOMPARE(world.value(u"screen locked"_s), u"no"_s);
        QCOMPARE(world.value(u"screen covered"_s), u"yes"_s);
        QCOMPARE(world.value(u"an ad may open by itself"_s), u"no"_s);
    }

    void aVideoThatKeepsTheSessionAwakeIsAFact()
    {
        World world;
        QCOMPARE(world.value(u"kept awake for a video"_s), u"unknown"_s);

        world.platform.foreground.keptAwake = true;
        QCOMPARE(world.value(u"kept awake for a video"_s), u"yes"_s);
        QCOMPARE(world.value(u"an ad may open by itself"_s), u"no"_s);
    }

    void withoutAnswersTheFactsAreUnknown()
    {
        World world;
        world.platform.foreground.onScreen = std::nullopt;

        QCOMPARE(world.value(u"windows"_s), u"unknown"_s);
        QCOMPARE(world.value(u"front application"_s), u"none, or unknown"_s);
    }

    void theLoginItemIsToldAsItIs_data()
    {
        QTest::addColumn<LoginItem::Status>("status");
        QTest::addColumn<QString>("told");

        using Status = LoginItem::Status;
        QTest::newRow("on") << Status::enabled << u"on"_s;
        QTest::newRow("off") << Status::notRegistered << u"off"_s;
        QTest::newRow("switched off") << Status::requiresApproval << u"switched off by the desktop's own tools"_s;
        QTest::newRow("gone") << Status::notFound << u"on, but for a program that is gone"_s;
    }

    void theLoginItemIsToldAsItIs()
    {
        QFETCH(const LoginItem::Status, status);
        QFETCH(const QString, told);
        World world;
        world.platform.loginItem.current = status;

        QCOMPARE(world.value(u"start at login"_s), told);
    }

    void anotherServiceIsSaidWithoutItsAddress()
    {
        World world;
        QCOMPARE(world.value(u"service"_s), u"the production one"_s);

        world.platform.settings.values.insert_or_assign(u"apiBaseURL"_s, Json(u"https://inside.example"_s));

        QCOMPARE(world.value(u"service"_s), u"another one, by the setting apiBaseURL"_s);
        QVERIFY(!world.text().contains(u"inside"_s));

        // No address: the program talks to the production service then.
        world.platform.settings.values.insert_or_assign(u"apiBaseURL"_s, Json(true));
        QCOMPARE(world.value(u"service"_s), u"the production one"_s);
    }

    void aProgramThatDoesNotRunHasNoErrors()
    {
        World world;

        QCOMPARE(world.value(u"running"_s), u"no"_s);
        QVERIFY(!world.text().contains(u"error"_s));
    }

    void aProgramThatRunsAndDoesNotAnswerIsToldFrom()
    {
        World world;
        world.isAnyRunning = true;

        QCOMPARE(world.value(u"running"_s), u"yes, but it does not answer"_s);
        QVERIFY(!world.text().contains(u"error"_s));
    }

    void theErrorsOfTheRunningProgramAreThereWithTheirAge()
    {
        World world;
        AppState state(world.platform.lend(), world.transport);
        RecentErrors errors(state, world.platform.clock);
        QCOMPARE(world.value(u"running"_s, &errors), u"yes"_s);
        QCOMPARE(world.value(u"errors"_s, &errors), u"none"_s);

        state.lastError = u"The server could not be found."_s;
        settle();
        world.platform.clock.advance(2min + 59s);
        QCOMPARE(world.value(u"error, 2 min ago"_s, &errors), u"The server could not be found."_s);

        state.lastError = u"The server could not be found."_s;
        settle();
        QCOMPARE(world.value(u"error, 0 min ago, 2 times in a row"_s, &errors), u"The server could not be found."_s);
    }

    void nothingNamesTheDeviceOrHoldsItsToken()
    {
        World world;
        world.platform.secrets.put(u"orvella.device-token"_s, "token-of-the-device");
        world.platform.device.deviceName = u"computer-of-the-viewer"_s;
        world.platform.applications.running = {{true, u"org.secret.Application"_s, u"Secret"_s}};

        const auto text = world.text();

        QVERIFY(!text.contains(u"token-of-the-device"_s));
        QVERIFY(!text.contains(u"computer-of-the-viewer"_s));
        QVERIFY(!text.contains(u"Secret"_s));
        QCOMPARE(world.platform.applications.readings, 0);
    }
};

QTEST_MAIN(DiagnosisTest)

#include "DiagnosisTest.moc"
