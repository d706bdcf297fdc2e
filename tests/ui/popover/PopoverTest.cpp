#include "ui/popover/Popover.h"

#include "support/FakePlatform.h"
#include "ui/popover/Shadow.h"

#include <QApplication>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QVBoxLayout>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    Look look {platform.look};
    std::optional<PopoverAnchor> anchor {PopoverAnchor {QRect(400, 0, 1, 28), 2}};
    std::unique_ptr<Popover> popover;
    QPushButton* button = nullptr;

    explicit World(Popover::Behaviour behaviour = Popover::Behaviour::transient, bool composites = false)
    {
        platform.windows.composites = composites;
        auto* const content = new QWidget;
        content->setFixedSize(300, 100);
        button = new QPushButton(content);
        popover = std::make_unique<Popover>(
            look, platform.windows, platform.clock, behaviour, content, [this] { return anchor; });
    }

    void open(Popover::Keyboard keyboard = Popover::Keyboard::taken)
    {
        popover->open(keyboard);
        settle();
    }
};

const auto kStays = Popover::Behaviour::applicationDefined;

} // namespace

class PopoverTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itHangsFromItsAnchor()
    {
        World world;

        world.open();

        QVERIFY(world.popover->isShown());
        QVERIFY(world.popover->isVisible());
        QCOMPARE(world.popover->contentRect(), QRect(250, 38, 300, 100));
    }

    void withACompositorTheWindowHasRoomForTheShadow()
    {
        World world(kStays, true);

        world.open();

        QCOMPARE(world.popover->geometry(), QRect(250, 38, 300, 100).marginsAdded(kShadowMargins));
        QVERIFY(world.popover->testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(world.popover->mask().isEmpty());
    }

    void theShadowLetsThePointerThrough()
    {
        World world(kStays, true);

        world.open();

        const auto& region = world.platform.windows.inputRegion;
        QVERIFY(region.contains(QPoint(kShadowMargins.left() + 150, kShadowMargins.top() + 50)));
        QVERIFY(!region.contains(QPoint(5, 50)));
        QVERIFY(!region.contains(QPoint(kShadowMargins.left() + 150, kShadowMargins.top() + 110)));
    }

    void withoutACompositorTheWindowIsCutToTheShape()
    {
        World world;

        world.open();

        QVERIFY(!world.popover->testAttribute(Qt::WA_TranslucentBackground));
        const auto mask = world.popover->mask();
        // The tip of the arrow and the content are in it, what is beside the arrow is not.
        QVERIFY(mask.contains(QPoint(151, 5)));
        QVERIFY(mask.contains(QPoint(2, 50)));
        QVERIFY(!mask.contains(QPoint(20, 3)));
    }

    void aDesktopThatPlacesWindowsItselfGetsAnOrdinaryOne()
    {
        World world;
        world.platform.windows.places = false;

        world.open();

        QCOMPARE(world.popover->size(), QSize(300, 100));
        QVERIFY(!world.popover->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(world.popover->windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QCOMPARE(world.popover->windowTitle(), u"Orvella"_s);
    }

    void openingItTwiceIsOpeningItOnce()
    {
        World world;
        world.open();

        world.open();

        QCOMPARE(world.platform.windows.activated.size(), 1U);
        QCOMPARE(world.platform.windows.watches(), 1U);
    }

    void closedByTheProgramItIsGoneAndSaysSoOnce()
    {
        World world;
        const QSignalSpy closed(world.popover.get(), &Popover::closed);
        world.open();

        world.popover->performClose();
        world.popover->performClose();

        QVERIFY(!world.popover->isShown());
        QVERIFY(!world.popover->isVisible());
        QCOMPARE(closed.count(), 1);
        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void itOpensAgain()
    {
        World world;
        world.open();
        world.popover->performClose();
        world.anchor = PopoverAnchor {QRect(300, 0, 1, 28), 2};

        world.open();

        QCOMPARE(world.popover->contentRect().topLeft(), QPoint(150, 38));
    }

    void withoutTheKeyboardItNeitherActivatesNorReactsToKeys()
    {
        World world(kStays);
        const QSignalSpy clicks(world.button, &QPushButton::clicked);

        world.open(Popover::Keyboard::left);
        QTest::keyClick(world.popover.get(), Qt::Key_Return);
        QTest::keyClick(world.popover.get(), Qt::Key_Space);

        QVERIFY(world.platform.windows.activated.empty());
        QVERIFY(world.popover->testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(clicks.count(), 0);
    }

    void withTheKeyboardNothingInItHasItUntilTheViewerTabsOn()
    {
        World world;
        world.open();
        QApplication::setActiveWindow(world.popover.get());
        QVERIFY(!world.button->hasFocus());

        QTest::keyClick(world.popover.get(), Qt::Key_Tab);

        QVERIFY(world.button->hasFocus());
    }

    void escapeClosesWhatIsTransient()
    {
        World world;
        world.open();

        QTest::keyClick(world.popover.get(), Qt::Key_Escape);

        QVERIFY(!world.popover->isShown());
    }

    void escapeOnlyTellsOfItselfInWhatStays()
    {
        World world(kStays);
        const QSignalSpy escaped(world.popover.get(), &Popover::escaped);
        world.open();

        QTest::keyClick(world.popover.get(), Qt::Key_Escape);

        QVERIFY(world.popover->isShown());
        QCOMPARE(escaped.count(), 1);
    }

    void aPressElsewhereClosesWhatIsTransient()
    {
        World world;
        world.open();

        world.platform.windows.press({10, 700});

        QVERIFY(!world.popover->isShown());
        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void aPressInItOrOnItsAnchorDoesNot_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::newRow("in the middle") << QPoint(400, 80);
        QTest::newRow("on the anchor") << QPoint(400, 14);
        QTest::newRow("in its last corner") << QPoint(549, 137);
    }

    void aPressInItOrOnItsAnchorDoesNot()
    {
        QFETCH(const QPoint, place);
        World world;
        world.open();

        world.platform.windows.press(place);

        QVERIFY(world.popover->isShown());
    }

    void aPressBesideTheLastClickOnTheItemIsOneOnTheItem()
    {
        World world;
        world.anchor = PopoverAnchor {QRect(400, 14, 1, 1), 2};
        world.open();

        world.platform.windows.press({416, 14});
        QVERIFY(world.popover->isShown());

        world.platform.windows.press({417, 14});
        QVERIFY(!world.popover->isShown());
    }

    void whatFadesAwayTakesNoClicksAndOpensAgainAsNew()
    {
        World world(kStays, true);
        world.platform.look.motionReduced = false;
        const QSignalSpy clicks(world.button, &QPushButton::clicked);
        world.open();
        QTRY_COMPARE(world.popover->windowOpacity(), 1.0);

        world.popover->performClose();
        QVERIFY(world.popover->isVisible());
        auto* const content = world.button->parentWidget();
        QVERIFY(content->testAttribute(Qt::WA_TransparentForMouseEvents));

        world.open();
        QVERIFY(!content->testAttribute(Qt::WA_TransparentForMouseEvents));
        QTRY_COMPARE(world.popover->windowOpacity(), 1.0);
        QVERIFY(world.popover->isVisible());
        QVERIFY(world.popover->isShown());
    }

    void aCompositorThatComesOrGoesIsReckonedWithAtTheNextOpening()
    {
        World world;
        world.open();
        world.popover->performClose();
        world.platform.windows.composites = true;

        world.open();
        QVERIFY(world.popover->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(world.popover->geometry(), QRect(250, 38, 300, 100).marginsAdded(kShadowMargins));

        world.popover->performClose();
        world.platform.windows.composites = false;
        world.open();
        QVERIFY(!world.popover->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(world.popover->size(), QSize(302, 110));
    }

    void pressesDoNotMatterToWhatStays()
    {
        World world(kStays);
        world.open();

        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void anotherProgramsWindowThatTakesTheKeyboardClosesWhatIsTransient()
    {
        World world;
        world.open();
        QApplication::setActiveWindow(world.popover.get());

        QApplication::setActiveWindow(nullptr);

        QVERIFY(!world.popover->isShown());
    }

    void anotherWindowOfTheProgramDoesNot()
    {
        World world;
        QWidget other;
        other.show();
        world.open();
        QApplication::setActiveWindow(world.popover.get());

        QApplication::setActiveWindow(&other);

        QVERIFY(world.popover->isShown());
    }

    void losingTheKeyboardDoesNotMatterToWhatStays()
    {
        World world(kStays);
        world.open();
        QApplication::setActiveWindow(world.popover.get());

        QApplication::setActiveWindow(nullptr);

        QVERIFY(world.popover->isShown());
    }

    void aDesktopThatClosesWhatIsTransientClosesIt()
    {
        World world;
        world.open();

        world.popover->close();

        QVERIFY(!world.popover->isShown());
    }

    void aDesktopThatClosesWhatStaysOnlyAsks()
    {
        World world(kStays);
        const QSignalSpy asked(world.popover.get(), &Popover::closeRequested);
        world.open();

        world.popover->close();

        QVERIFY(world.popover->isShown());
        QVERIFY(world.popover->isVisible());
        QCOMPARE(asked.count(), 1);
    }

    void itFollowsALookThatChanges()
    {
        World world;
        world.open();
        world.anchor = PopoverAnchor {QRect(300, 0, 1, 28), 2};

        world.platform.look.changed();

        QCOMPARE(world.popover->contentRect().topLeft(), QPoint(150, 38));
    }

    void itFollowsAScreenThatChanges()
    {
        World world;
        world.open();
        world.anchor = std::nullopt;

        Q_EMIT QGuiApplication::primaryScreen()->availableGeometryChanged({});

        const auto area = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(world.popover->contentRect().topRight() + QPoint(1, 0), QPoint(area.right() + 1 - 8, 8));
    }

    void itLeavesNothingBehind()
    {
        World world;
        world.open();

        world.popover.reset();

        QCOMPARE(world.platform.windows.watches(), 0U);
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }
};

QTEST_MAIN(PopoverTest)

#include "PopoverTest.moc"
