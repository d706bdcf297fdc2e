#include "platform/macos/MacForegroundFacts.h"

#include "app/AutoOpenGuard.h"
#include "support/FakeCocoa.h"

#include <QTest>

using namespace orvella;

namespace {

constexpr std::int64_t kFront = 42;

CocoaForeground::Window window(double width, double height)
{
    return {kFront, 0, CocoaForeground::Size {width, height}};
}

bool mayOpen(const FakeCocoaForeground& windowServer)
{
    return AutoOpenGuard::canOpenForegroundWindow(MacForegroundFacts(windowServer));
}

} // namespace

/// The facts, and what the guard makes of them.
class MacForegroundFactsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLockIsABooleanOrNotSet_data()
    {
        QTest::addColumn<PropertyValue>("value");
        QTest::addColumn<bool>("opens");
        QTest::newRow("no dictionary or no key") << PropertyValue() << true;
        QTest::newRow("true") << PropertyValue(1.0) << false;
        QTest::newRow("false") << PropertyValue(0.0) << true;
        QTest::newRow("a text") << PropertyValue("true") << true;
        QTest::newRow("another number") << PropertyValue(2.0) << true;
    }

    void theLockIsABooleanOrNotSet()
    {
        QFETCH(const PropertyValue, value);
        QFETCH(const bool, opens);
        FakeCocoaForeground windowServer;
        windowServer.lock = value;

        QCOMPARE(mayOpen(windowServer), opens);
    }

    void aWindowAsLargeAsAScreenForbids_data()
    {
        QTest::addColumn<CocoaForeground::Window>("found");
        QTest::addColumn<bool>("opens");
        QTest::newRow("as large") << window(1440, 900) << false;
        QTest::newRow("four points less") << window(1436, 896) << false;
        QTest::newRow("five points narrower") << window(1435, 900) << true;
        QTest::newRow("five points lower") << window(1440, 895) << true;
        QTest::newRow("no height") << window(1440, 0) << true;
        QTest::newRow("another layer") << CocoaForeground::Window {kFront, 25, CocoaForeground::Size {1440, 900}}
                                       << true;
        QTest::newRow("no layer") << CocoaForeground::Window {kFront, {}, CocoaForeground::Size {1440, 900}} << true;
        QTest::newRow("another process") << CocoaForeground::Window {7, 0, CocoaForeground::Size {1440, 900}} << true;
        QTest::newRow("no process") << CocoaForeground::Window {{}, 0, CocoaForeground::Size {1440, 900}} << true;
        QTest::newRow("no bounds") << CocoaForeground::Window {kFront, 0, {}} << true;
    }

    void aWindowAsLargeAsAScreenForbids()
    {
        QFETCH(const CocoaForeground::Window, found);
        QFETCH(const bool, opens);
        FakeCocoaForeground windowServer;
        windowServer.front = kFront;
        windowServer.onScreen = {window(300, 200), found};

        QCOMPARE(mayOpen(windowServer), opens);
    }

    void anyOfTheScreensCounts()
    {
        FakeCocoaForeground windowServer;
        windowServer.front = kFront;
        windowServer.onScreen = {window(1024, 768)};

        QVERIFY(mayOpen(windowServer));
        windowServer.screenSizes.push_back({1024, 768});
        QVERIFY(!mayOpen(windowServer));
    }

    void withoutAFrontApplicationOrAListNothingForbids()
    {
        FakeCocoaForeground windowServer;
        windowServer.onScreen = {window(1440, 900)};
        QVERIFY(mayOpen(windowServer));

        windowServer.front = kFront;
        windowServer.onScreen.reset();
        QVERIFY(mayOpen(windowServer));
    }

    void theWindowsSayItAllSoNobodyIsAskedWhatKeepsTheScreenOn()
    {
        const FakeCocoaForeground windowServer;

        QCOMPARE(MacForegroundFacts(windowServer).isKeptAwakeForViewing(), std::nullopt);
    }
};

QTEST_GUILESS_MAIN(MacForegroundFactsTest)

#include "MacForegroundFactsTest.moc"
