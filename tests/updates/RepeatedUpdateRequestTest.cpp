#include "updates/PackageUpdaterFixture.h"

#include <QWindow>

#include <utility>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

/// As PackageKit numbers them.
constexpr uint kBlocked = 9;

} // namespace

/// The viewer asks for a newer version once more, at each stage of what the first request led to.
class RepeatedUpdateRequestTest final : public QObject, private PackageUpdaterFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void aSecondRequestBringsTheSameWindowToTheFront()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;
        m_updater->checkForUpdates();
        auto* const window = windows().constFirst();
        QTRY_COMPARE(m_packageKit->requests().size(), 1);
        window->showMinimized();

        m_updater->checkForUpdates();
        QTest::qWait(50);

        QCOMPARE(windows(), QList {window});
        QVERIFY(!window->isMinimized());
        QCOMPARE(m_windows.activated, std::vector(2, window->windowHandle()));
        QCOMPARE(m_packageKit->requests().size(), 1);
    }

    void aSecondRequestLeavesAnOfferAsItIs()
    {
        offer();
        const auto requests = m_packageKit->requests();

        m_updater->checkForUpdates();
        QTest::qWait(50);

        QCOMPARE(headline(), u"Version 0.2.0 is available."_s);
        QCOMPARE(m_packageKit->requests(), requests);
    }

    void aSecondRequestLooksAgainWhereNothingWasFound()
    {
        const auto updates = std::exchange(m_packageKit->scripts[u"GetUpdates"_s], {});
        m_updater->checkForUpdates();
        QTRY_COMPARE(headline(), u"Orvella is up to date."_s);
        m_packageKit->scripts[u"GetUpdates"_s] = updates;

        m_updater->checkForUpdates();

        QTRY_COMPARE(headline(), u"Version 0.2.0 is available."_s);
        QCOMPARE(windows().size(), 1);
    }

    void aSecondRequestLooksAgainWhereTheInstallationFailed()
    {
        m_packageKit->scripts[u"UpdatePackages"_s] = {.error = std::pair(46U, u"No space is left."_s), .exit = 2};
        offer();
        QTest::mouseClick(install(), Qt::LeftButton);
        QTRY_COMPARE(headline(), u"Version 0.2.0 could not be installed."_s);
        m_packageKit->scripts[u"UpdatePackages"_s] = {};

        m_updater->checkForUpdates();
        QTRY_COMPARE(headline(), u"Version 0.2.0 is available."_s);
        QTest::mouseClick(install(), Qt::LeftButton);

        QTRY_COMPARE(headline(), u"Version 0.2.0 is installed."_s);
        QCOMPARE(windows().size(), 1);
    }

    void aSecondRequestLooksAgainWhereTheSystemHeldTheVersionBack()
    {
        const auto updates = std::exchange(m_packageKit->scripts[u"GetUpdates"_s], {.packages = {{kBlocked, kNew}}});
        m_updater->checkForUpdates();
        QTRY_COMPARE(detail(), u"Your system is set to keep version 0.1.0."_s);
        QVERIFY(!install()->isVisible());
        m_packageKit->scripts[u"GetUpdates"_s] = updates;

        m_updater->checkForUpdates();

        QTRY_COMPARE(detail(), u"You have version 0.1.0."_s);
        QVERIFY(install()->isVisible());
    }

    void aSecondRequestLeavesAnInstallationAsItIs()
    {
        m_packageKit->scripts[u"UpdatePackages"_s].isHeld = true;
        offer();
        QTest::mouseClick(install(), Qt::LeftButton);
        QTRY_COMPARE(installations().size(), 1);
        const auto calls = m_packageKit->calls();

        m_updater->checkForUpdates();
        QTest::qWait(50);

        QCOMPARE(headline(), u"Installing version 0.2.0…"_s);
        QCOMPARE(m_packageKit->calls(), calls);
    }

    void aRequestAfterTheWindowWasClosedOpensANewOne()
    {
        offer();
        windows().constFirst()->close();

        m_updater->checkForUpdates();

        QCOMPARE(windows().size(), 1);
        QCOMPARE(headline(), u"Looking for a newer version…"_s);
        QTRY_COMPARE(headline(), u"Version 0.2.0 is available."_s);
    }
};

QTEST_MAIN(RepeatedUpdateRequestTest)

#include "RepeatedUpdateRequestTest.moc"
