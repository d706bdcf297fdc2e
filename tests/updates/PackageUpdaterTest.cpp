#include "updates/PackageUpdater.h"
#include "support/FakePackageKit.h"
#include "support/FakePlatform.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QWindow>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr uint kInstalled = 1;
constexpr uint kNormal = 5;
constexpr uint kBlocked = 9;

const auto kNew = u"orvella;0.2.0-1;amd64;orvella-stable-main"_s;

QList<QWidget*> windows()
{
    auto windows = QApplication::topLevelWidgets();
    windows.removeIf([](const QWidget* window) { return !window->isVisible(); });
    return windows;
}

} // namespace

/// The updater as the program uses it, with its window.
class PackageUpdaterTest final : public QObject {
    Q_OBJECT

private:
    template <class T> static T* find(const QString& name)
    {
        auto* const found = windows().isEmpty() ? nullptr : windows().constFirst()->findChild<T*>(name);
        if (!found)
            qFatal("The window has no such part.");
        return found;
    }

    static QString headline() { return find<QLabel>(u"updateHeadline"_s)->text(); }

    static QString detail() { return find<QLabel>(u"updateDetail"_s)->text(); }

    static QPushButton* install() { return find<QPushButton>(u"updateInstall"_s); }

    static QPushButton* close() { return find<QPushButton>(u"updateClose"_s); }

    static QProgressBar* progress() { return find<QProgressBar>(u"updateProgress"_s); }

    [[nodiscard]] QStringList installations() const { return m_packageKit->requests().filter(u"UpdatePackages(2"_s); }

    void offer()
    {
        m_updater->checkForUpdates();
        QTRY_COMPARE(headline(), u"Version 0.2.0 is available."_s);
    }

private Q_SLOTS:
    void init()
    {
        m_packageKit = std::make_unique<FakePackageKit>();
        m_packageKit->scripts = {
            {u"Resolve"_s, {.packages = {{kInstalled, u"orvella;0.1.0-1;amd64;local"_s}}}},
            {u"GetUpdates"_s, {.packages = {{kNormal, kNew}}}},
        };
        m_packageKit->start();
        m_windows.activated.clear();
        m_updater = std::make_unique<PackageUpdater>(QDBusConnection::sessionBus(), m_clock, m_windows);
    }

    void cleanup()
    {
        m_updater.reset();
        QVERIFY(windows().isEmpty());
        QCOMPARE(m_clock.sleepers(), 0U);
    }

    void startingShowsNothingAndAsksNobody()
    {
        m_updater->start();
        QTest::qWait(100);

        QVERIFY(windows().isEmpty());
        QCOMPARE(m_packageKit->calls(), QStringList());
    }

    void aRequestOpensTheWindowInFrontAndLooks()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;

        m_updater->checkForUpdates();

        QCOMPARE(windows().size(), 1);
        QCOMPARE(m_windows.activated, std::vector {windows().constFirst()->windowHandle()});
        QCOMPARE(windows().constFirst()->windowTitle(), u"Orvella"_s);
        QCOMPARE(headline(), u"Looking for a newer version…"_s);
        QVERIFY(progress()->isVisible());
        QCOMPARE(progress()->maximum(), 0);
        QVERIFY(!install()->isVisible());
        QCOMPARE(close()->text(), u"Cancel"_s);
    }

    void whatIsUpToDateSaysSo()
    {
        m_packageKit->scripts[u"GetUpdates"_s] = {};

        m_updater->checkForUpdates();

        QTRY_COMPARE(headline(), u"Orvella is up to date."_s);
        QCOMPARE(detail(), u"You have version 0.1.0."_s);
        QVERIFY(!install()->isVisible());
        QVERIFY(!progress()->isVisible());
        QCOMPARE(close()->text(), u"Close"_s);
    }

    void aNewVersionIsInstalledWhenTheViewerWantsIt()
    {
        m_packageKit->scripts[u"UpdatePackages"_s].isHeld = true;
        offer();
        QVERIFY(install()->isVisible());
        QCOMPARE(installations(), QStringList());

        QTest::mouseClick(install(), Qt::LeftButton);
        QTRY_COMPARE(installations(), QStringList {u"UpdatePackages(2, %1)"_s.arg(kNew)});
        QCOMPARE(headline(), u"Installing version 0.2.0…"_s);
        QVERIFY(!install()->isVisible());
        QVERIFY(progress()->isVisible());
        m_packageKit->finish(1);

        QTRY_COMPARE(headline(), u"Version 0.2.0 is installed."_s);
        QCOMPARE(detail(), u"It takes effect when Orvella is started again."_s);
        QVERIFY(!progress()->isVisible());
    }

    void theBarShowsOnlyWhatIsKnown()
    {
        m_packageKit->scripts[u"UpdatePackages"_s].isHeld = true;
        offer();
        QTest::mouseClick(install(), Qt::LeftButton);
        QTRY_COMPARE(installations().size(), 1);

        m_packageKit->tell({{u"Status"_s, 27U}, {u"Percentage"_s, 100U}});
        QTRY_COMPARE(detail(), u"Preparing the installation…"_s);
        QCOMPARE(progress()->maximum(), 0);
        m_packageKit->tell({{u"Status"_s, 8U}, {u"Percentage"_s, 20U}});
        QTRY_COMPARE(progress()->value(), 20);
        QCOMPARE(progress()->maximum(), 100);
        QCOMPARE(detail(), u"Downloading…"_s);
        m_packageKit->tell({{u"Percentage"_s, 101U}});

        QTRY_COMPARE(progress()->maximum(), 0);
    }

    void wordsFromOutsideAreNotMarkup()
    {
        const auto words = u"<img src='file:///etc/passwd'><b>bad</b> &amp; <a href='http://a.example'>ugly</a>"_s;
        m_packageKit->scripts[u"GetUpdates"_s] = {.error = std::pair(4U, words), .exit = 2};

        m_updater->checkForUpdates();

        QTRY_COMPARE(headline(), u"Orvella could not look for updates."_s);
        QVERIFY(detail().endsWith(words));
        for (const auto* const label : windows().constFirst()->findChildren<QLabel*>())
            QCOMPARE(label->textFormat(), Qt::PlainText);
    }

    void keysForAnotherProgramInstallNothing()
    {
        offer();
        auto* const window = windows().constFirst();
        window->activateWindow();
        QTRY_VERIFY(window->isActiveWindow());

        for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
            QTest::keyClick(window->windowHandle(), key);
        QTest::qWait(50);

        QCOMPARE(windows(), QList {window});
        QCOMPARE(headline(), u"Version 0.2.0 is available."_s);
        QCOMPARE(m_packageKit->requests().filter(u"UpdatePackages"_s), QStringList());
    }

    void theKeyboardReachesEveryButton()
    {
        offer();
        auto* const window = windows().constFirst();
        window->activateWindow();
        QTRY_VERIFY(window->isActiveWindow());

        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        QVERIFY(close()->hasFocus());
        QTest::keyClick(window->windowHandle(), Qt::Key_Tab);
        QVERIFY(install()->hasFocus());
        QTest::keyClick(window->windowHandle(), Qt::Key_Space);

        QTRY_COMPARE(headline(), u"Version 0.2.0 is installed."_s);
    }

    void everythingInTheWindowHasAName()
    {
        offer();

        for (auto* const part : windows().constFirst()->findChildren<QWidget*>()) {
            QVERIFY(!part->objectName().isEmpty());
            auto* const accessible = QAccessible::queryAccessibleInterface(part);
            QVERIFY2(!accessible->text(QAccessible::Name).isEmpty(), qPrintable(part->objectName()));
        }
        QCOMPARE(install()->accessibleName(), u"Install version 0.2.0"_s);
        QCOMPARE(
            windows().constFirst()->accessibleDescription(), u"Version 0.2.0 is available. You have version 0.1.0."_s);
    }

    void closingTheWindowWithdrawsTheInstallation_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Escape") << true;
    }

    void closingTheWindowWithdrawsTheInstallation()
    {
        QFETCH(const bool, byKey);
        m_packageKit->scripts[u"UpdatePackages"_s].isHeld = true;
        offer();
        QTest::mouseClick(install(), Qt::LeftButton);
        QTRY_COMPARE(installations().size(), 1);

        if (byKey)
            QTest::keyClick(windows().constFirst(), Qt::Key_Escape);
        else
            QTest::mouseClick(close(), Qt::LeftButton);

        QTRY_COMPARE(m_packageKit->calls().constLast(), u"Cancel()"_s);
        QVERIFY(windows().isEmpty());
    }

    void theEndOfTheProgramWithdrawsTheInstallation()
    {
        m_packageKit->scripts[u"UpdatePackages"_s].isHeld = true;
        offer();
        QTest::mouseClick(install(), Qt::LeftButton);
        QTRY_COMPARE(installations().size(), 1);

        m_updater.reset();

        QTRY_COMPARE(m_packageKit->calls().constLast(), u"Cancel()"_s);
    }

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

private:
    std::unique_ptr<FakePackageKit> m_packageKit;
    FakeClock m_clock;
    FakeWindows m_windows;
    std::unique_ptr<PackageUpdater> m_updater;
};

QTEST_MAIN(PackageUpdaterTest)

#include "PackageUpdaterTest.moc"
