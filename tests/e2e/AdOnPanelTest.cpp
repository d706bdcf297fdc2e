#include "e2e/FaceFixture.h"
#include "support/PlainEditor.h"
#include "support/Samples.h"

#include <QAbstractButton>
#include <QApplication>
#include <QScreen>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// An ad in the same surroundings as the face: what it leaves to others, and what is left to it.
class AdOnPanelTest final : public QObject, private FaceFixture {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { lightenPalette(); }

    void init() { start(); }

    void cleanup() { finish(); }

    void anAdThatOpensByItselfLeavesTheKeyboardWithTheEditor()
    {
        PlainEditor editor;
        QVERIFY(editor.start({100, 300, 400, 300}));
        launch();
        state().autoOpenAds = true;
        QVERIFY(VirtualDesktop::click({200, 400}));
        QVERIFY(type(u"before "_s));
        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"before "_s, kPatienceMs);

        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QVERIFY(type(u"and after "_s));
        QVERIFY(press(u"Return"_s));
        QVERIFY(press(u"Escape"_s));

        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"before and after \n"_s, kPatienceMs);
        QVERIFY(adPanel());
        QVERIFY(!QApplication::activeWindow());
        // It is where the item is, where the panel says so, else in the corner.
        const auto work = QGuiApplication::primaryScreen()->availableGeometry();
        const auto distance = m_platform->lend().statusItem.place() ? 2 + kArrowHeight : 8;
        QTRY_COMPARE(adPanel()->contentRect().topRight(), QPoint(work.right() - 8, work.top() + distance));
    }

    void aClickIntoAnAdThatOpenedByItselfReachesWhatIsThere()
    {
        launch();
        state().autoOpenAds = true;
        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QVERIFY(settles(*adPanel()));
        const auto* const close = adPanel()->findChild<QAbstractButton*>(u"close"_s);

        QVERIFY(VirtualDesktop::click(close->mapToGlobal(close->rect().center())));

        QTRY_VERIFY_WITH_TIMEOUT(!adPanel(), kPatienceMs);
        QVERIFY(!state().availableAd());
    }

    void aClickOnAGreenItemOpensTheAdWithTheKeyboardButNoKeyDoesAnythingYet()
    {
        m_transport->answer(endpoints::kAdsAvailable, anOffer());
        launch();
        const auto item = waitForGreen();
        QVERIFY(item);

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), adPanel(), kPatienceMs);
        QVERIFY(press(u"space"_s));
        QVERIFY(press(u"Return"_s));
        QTest::qWait(kSettledMs);
        QVERIFY(adPanel());
        QVERIFY(state().availableAd());

        // The third control is the way out.
        for (int step = 0; step < 3; ++step)
            QVERIFY(press(u"Tab"_s));
        QVERIFY(press(u"space"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!adPanel(), kPatienceMs);
    }

    void aClickOnTheItemWhileAnAdIsShownDoesNotEvenCloseTheMenu()
    {
        openMenu();
        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(menu()->findChild<QAbstractButton*>(u"openAd"_s), kPatienceMs);
        menu()->findChild<QAbstractButton*>(u"openAd"_s)->click();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QTest::qWait(kSettledMs);
        QVERIFY(menu());

        QVERIFY(VirtualDesktop::click(m_item));
        QTest::qWait(kSettledMs);

        QVERIFY(menu());
        QVERIFY(adPanel());
    }

    void aClickElsewhereLeavesTheAdWhereItIs()
    {
        launch();
        state().autoOpenAds = true;
        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);

        QVERIFY(VirtualDesktop::click(kBareDesktop));
        QTest::qWait(kSettledMs);

        QVERIFY(adPanel());
    }
};

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    if (PlainEditor::isWanted(QApplication::arguments()))
        return PlainEditor::run(QApplication::arguments());
    QApplication::setQuitOnLastWindowClosed(false);
    AdOnPanelTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "AdOnPanelTest.moc"
