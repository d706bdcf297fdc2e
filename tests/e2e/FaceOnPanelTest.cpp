#include "e2e/FaceFixture.h"
#include "support/PlainEditor.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// The program's own objects in a real panel, under a real window manager, with a real pointer and a real keyboard;
/// only the service is played.
class FaceOnPanelTest final : public QObject, private FaceFixture {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { lightenPalette(); }

    void init() { start(); }

    void cleanup() { finish(); }

    void aClickOpensTheMenuUnderTheItemAndASecondOneClosesIt()
    {
        launch();
        const auto item = waitForItem();
        QVERIFY(item);

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(menu(), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), menu(), kPatienceMs);
        QVERIFY(settles(*menu()));
        const auto content = menu()->contentRect();
        const auto work = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(content.top(), work.top() + 2 + kArrowHeight);
        QVERIFY(content.right() <= work.right() - 8);

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
        QTest::qWait(kSettledMs);
        QVERIFY(!menu());

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(menu(), kPatienceMs);
    }

    void aClickOnTheBareDesktopClosesTheMenu()
    {
        openMenu();

        QVERIFY(VirtualDesktop::click(kBareDesktop));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
    }

    void aClickInAnotherWindowClosesTheMenuAndIsThatWindowsClick()
    {
        PlainEditor editor;
        QVERIFY(editor.start({100, 300, 300, 200}));
        openMenu();

        QVERIFY(VirtualDesktop::click({200, 400}));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(editor.isActive(), kPatienceMs);
        QVERIFY(type(u"typed"_s));
        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"typed"_s, kPatienceMs);
    }

    void aClickElsewhereInThePanelClosesTheMenu()
    {
        openMenu();

        QVERIFY(VirtualDesktop::click({300, 10}));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
    }

    void escapeClosesTheMenu()
    {
        openMenu();

        QVERIFY(press(u"Escape"_s));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
    }

    void theKeyboardSetsEverySetting()
    {
        openMenu();

        QVERIFY(press(u"Tab"_s));
        QVERIFY(press(u"space"_s));
        QTRY_VERIFY_WITH_TIMEOUT(state().autoOpenAds(), kPatienceMs);
        QVERIFY(press(u"Tab"_s));
        QVERIFY(press(u"space"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!state().anonymousMode(), kPatienceMs);
    }

    void aRealClickTogglesASwitch()
    {
        openMenu();
        QVERIFY(settles(*menu()));
        const auto* const row = menu()->findChild<QAbstractButton*>(u"autoOpenAds"_s);

        QVERIFY(VirtualDesktop::click(row->mapToGlobal(row->rect().center())));

        QTRY_VERIFY_WITH_TIMEOUT(state().autoOpenAds(), kPatienceMs);
        QVERIFY(menu());
    }

    void aRightClickOpensTheMenuWithTheWayOutWherePanelsAskForIt()
    {
        launch();
        const auto item = waitForItem();
        QVERIFY(item);

        QVERIFY(VirtualDesktop::click(*item, 3));

        if (qEnvironmentVariable("XDG_CURRENT_DESKTOP") == u"XFCE"_s) {
            // This panel has a menu of its own for items that export none.
            QTest::qWait(kSettledMs);
            QVERIFY(!QApplication::activePopupWidget());
            QVERIFY(press(u"Escape"_s));
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget(), kPatienceMs);
        QCOMPARE(QApplication::activePopupWidget()->objectName(), u"statusMenu"_s);
        QVERIFY(press(u"Escape"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activePopupWidget(), kPatienceMs);
    }

    void theStartupWindowComesToTheFrontOnEveryReopen()
    {
        PlainEditor editor;
        QVERIFY(editor.start({100, 300, 400, 300}));
        launch();
        QVERIFY(VirtualDesktop::click({200, 400}));
        QVERIFY(type(u"typed"_s));
        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"typed"_s, kPatienceMs);

        m_delegate->applicationShouldHandleReopen();

        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activeWindow(), kPatienceMs);
        QCOMPARE(QApplication::activeWindow()->objectName(), u"launchWindow"_s);
        QVERIFY(press(u"Return"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activeWindow(), kPatienceMs);
    }
};

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    if (PlainEditor::isWanted(QApplication::arguments()))
        return PlainEditor::run(QApplication::arguments());
    QApplication::setQuitOnLastWindowClosed(false);
    FaceOnPanelTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "FaceOnPanelTest.moc"
