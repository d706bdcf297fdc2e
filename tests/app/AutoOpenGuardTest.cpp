#include "app/AutoOpenGuard.h"

#include "support/FakePlatform.h"

#include <QTest>

using namespace orvella;

namespace {

constexpr qint64 kFront = 42;
constexpr qint64 kOther = 7;

ScreenWindow window(double width, double height, qint64 owner = kFront, qint64 layer = 0)
{
    return {owner, layer, QSizeF(width, height)};
}

} // namespace

/// A screen of 1440 x 900 points, with an application in front.
class AutoOpenGuardTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theWindowsInFrontDecide_data()
    {
        QTest::addColumn<std::vector<ScreenWindow>>("windows");
        QTest::addColumn<bool>("canOpen");

        const auto row = [](const char* name, const std::vector<ScreenWindow>& windows, bool canOpen) {
            QTest::newRow(name) << windows << canOpen;
        };
        row("none", {}, true);
        row("as large as the screen", {window(1440, 900)}, false);
        row("within four points", {window(1436, 896)}, false);
        row("a point too narrow", {window(1435, 900)}, true);
        row("a point too low", {window(1440, 895)}, true);
        row("larger than the screen", {window(2000, 2000)}, false);
        row("as large, behind a small one", {window(100, 100), window(1440, 900)}, false);
        row("as large, on an overlay's layer", {window(1440, 900, kFront, 25)}, true);
        row("as large, below ordinary windows", {window(1440, 900, kFront, -1)}, true);
        row("as large, of another application", {window(1440, 900, kOther)}, true);
        row("as large, of nobody", {{std::nullopt, 0, QSizeF(1440, 900)}}, true);
        row("as large, on no layer", {{kFront, std::nullopt, QSizeF(1440, 900)}}, true);
        row("without a size", {{kFront, 0, std::nullopt}}, true);
        row("without a width", {window(0, 900)}, true);
        row("without a height", {window(1440, 0)}, true);
    }

    void theWindowsInFrontDecide()
    {
        QFETCH(const std::vector<ScreenWindow>, windows);
        QFETCH(const bool, canOpen);
        FakeForeground facts;
        facts.front = kFront;
        facts.onScreen = windows;

        QCOMPARE(AutoOpenGuard::canOpenForegroundWindow(facts), canOpen);
    }

    void aLockedScreenForbidsWhateverTheWindows()
    {
        FakeForeground facts;
        facts.locked = true;

        QVERIFY(!AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void aScreenThatIsNotLockedOrDoesNotSayAllows_data()
    {
        QTest::addColumn<std::optional<bool>>("locked");
        QTest::newRow("not locked") << std::optional(false);
        QTest::newRow("no answer") << std::optional<bool>();
    }

    void aScreenThatIsNotLockedOrDoesNotSayAllows()
    {
        QFETCH(const std::optional<bool>, locked);
        FakeForeground facts;
        facts.locked = locked;

        QVERIFY(AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void aSessionKeptAwakeForViewingForbidsWhereNoWindowsAreTold()
    {
        FakeForeground facts;
        facts.keptAwake = true;
        facts.onScreen = std::nullopt;
        facts.screenSizes = {};

        QVERIFY(!AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void aSessionThatIsNotKeptAwakeOrDoesNotSayAllows_data()
    {
        QTest::addColumn<std::optional<bool>>("keptAwake");
        QTest::newRow("not kept awake") << std::optional(false);
        QTest::newRow("no answer") << std::optional<bool>();
    }

    void aSessionThatIsNotKeptAwakeOrDoesNotSayAllows()
    {
        QFETCH(const std::optional<bool>, keptAwake);
        FakeForeground facts;
        facts.keptAwake = keptAwake;

        QVERIFY(AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void withoutAnApplicationInFrontOthersWindowsDoNotMatter()
    {
        FakeForeground facts;
        facts.onScreen = {window(1440, 900, kOther), {std::nullopt, 0, QSizeF(1440, 900)}};

        QVERIFY(AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void withoutAListOfWindowsItMayOpen()
    {
        FakeForeground facts;
        facts.front = kFront;
        facts.onScreen = std::nullopt;

        QVERIFY(AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void withoutScreensItMayOpen()
    {
        FakeForeground facts;
        facts.front = kFront;
        facts.onScreen = {window(1440, 900)};
        facts.screenSizes = {};

        QVERIFY(AutoOpenGuard::canOpenForegroundWindow(facts));
    }

    void anySizeOfScreenCountsWhereverTheWindowIs()
    {
        FakeForeground facts;
        facts.front = kFront;
        facts.screenSizes = {{1440, 900}, {1024, 768}};
        facts.onScreen = {window(1024, 768)};

        QVERIFY(!AutoOpenGuard::canOpenForegroundWindow(facts));
    }
};

QTEST_GUILESS_MAIN(AutoOpenGuardTest)

#include "AutoOpenGuardTest.moc"
