#include "updates/PackageUpdaterFixture.h"

#include <QAccessible>
#include <QWindow>

using namespace orvella;
using namespace Qt::StringLiterals;

/// The updater as the program uses it, with its window.
class PackageUpdaterTest final : public QObject, private PackageUpdaterFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

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
};

QTEST_MAIN(PackageUpdaterTest)

#include "PackageUpdaterTest.moc"
