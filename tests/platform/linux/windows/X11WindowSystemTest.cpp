#include "platform/linux/windows/SessionWindowSystem.h"

#include "support/PlainWindow.h"
#include "support/VirtualDesktop.h"

#include <xcb/xinput.h>

#include <QAbstractNativeEventFilter>
#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <cstdio>
#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

bool press(QPoint place, int button = 1)
{
    return VirtualDesktop::click(place, button);
}

/// Counts the presses that a window gets.
class ClickCounter final : public QObject {
public:
    explicit ClickCounter(QWindow& window) { window.installEventFilter(this); }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (event->type() == QEvent::MouseButtonPress)
            ++count;
        return false;
    }

    int count = 0;
};

} // namespace

/// Needs a display with a window manager.
class X11WindowSystemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QCOMPARE(QGuiApplication::platformName(), u"xcb"_s);
        m_windows = sessionWindowSystem({});
        m_presses.clear();
    }

    void cleanup()
    {
        m_watch.reset();
        m_windows.reset();
    }

    void aWindowGoesWhereTheProgramPutsIt() { QVERIFY(m_windows->placesWindows()); }

    void theScreenIsComposedWhileACompositorRuns()
    {
        QVERIFY(!m_windows->isCompositing());

        {
            QProcess compositor;
            compositor.start(u"picom"_s, {u"--config=/dev/null"_s, u"--backend=xrender"_s});
            QVERIFY(compositor.waitForStarted());
            QTRY_VERIFY(m_windows->isCompositing());
            compositor.terminate();
            QVERIFY(compositor.waitForFinished());
        }

        QVERIFY(!m_windows->isCompositing());
    }

    void aPressOnTheBareDesktopIsHeardWithItsPlace()
    {
        watch();

        QVERIFY(press(kBare));

        QTRY_COMPARE(m_presses, QList {kBare});
    }

    void everyButtonIsHeardAndTheWheelIsNot()
    {
        watch();

        for (const int button : {1, 2, 3, 8, 9}) {
            m_presses.clear();
            QVERIFY(press(kBare + QPoint(button, 0), button));
            QTRY_COMPARE(m_presses, QList {kBare + QPoint(button, 0)});
        }
        for (const int wheel : {4, 5, 6, 7})
            QVERIFY(press(kBare, wheel));
        QTest::qWait(200);
        QCOMPARE(m_presses.size(), 1);
    }

    void aPressOnAnotherProgramsWindowIsHeard()
    {
        const PlainWindow other({"main", "Sketcher", {}, {}});
        QTRY_VERIFY(other.isShown());
        watch();

        QVERIFY(press(other.place().center()));

        QTRY_COMPARE(m_presses, QList {other.place().center()});
    }

    void aPressOnAnOwnWindowIsHeardAndReachesTheWindow()
    {
        struct Window final : QWindow {
            void mousePressEvent(QMouseEvent*) override { ++presses; }

            int presses = 0;
        } own;
        own.setGeometry(300, 200, 100, 100);
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));
        watch();

        QVERIFY(press(own.geometry().center()));

        QTRY_COMPARE(m_presses, QList {own.geometry().center()});
        QTRY_COMPARE(own.presses, 1);
    }

    void aPressIsHeardWhileAnotherProgramHasThePointerToItself()
    {
        const PlainWindow other({"main", "Sketcher", {}, {}});
        QTRY_VERIFY(other.isShown());
        QTRY_VERIFY(other.grabPointer());
        watch();

        QVERIFY(press(kBare));

        QTRY_COMPARE(m_presses, QList {kBare});
    }

    void nothingIsHeardAfterTheEnd()
    {
        watch();
        QVERIFY(press(kBare));
        QTRY_COMPARE(m_presses.size(), 1);

        m_watch.reset();
        QVERIFY(press(kBare));
        QTest::qWait(200);

        QCOMPARE(m_presses.size(), 1);
    }

    void nothingIsReportedToTheProgramWhileNobodyListens()
    {
        struct RawPresses final : QAbstractNativeEventFilter {
            bool nativeEventFilter(const QByteArray&, void* message, qintptr*) override
            {
                const auto* const event = static_cast<const xcb_ge_generic_event_t*>(message);
                if (event->response_type == XCB_GE_GENERIC && event->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
                    ++count;
                return false;
            }

            int count = 0;
        } rawPresses;
        watch();
        m_watch.reset();
        // What is under way already.
        QTest::qWait(200);
        QCoreApplication::instance()->installNativeEventFilter(&rawPresses);

        QVERIFY(press(kBare));
        QTest::qWait(200);
        QCOMPARE(rawPresses.count, 0);

        watch();
        QVERIFY(press(kBare));
        QTRY_VERIFY(rawPresses.count > 0);
    }

    void theListenerMayEndItselfInsideItsCall()
    {
        m_watch = m_windows->watchPresses([this](QPoint place) {
            m_presses.append(place);
            m_watch.reset();
        });

        QVERIFY(press(kBare));
        QVERIFY(press(kBare));

        QTRY_COMPARE(m_presses.size(), 1);
        QTest::qWait(200);
        QCOMPARE(m_presses, QList {kBare});
    }

    void everyListenerHearsUntilAnotherEndsIt()
    {
        std::unique_ptr<PressWatch> second;
        watch();
        second = m_windows->watchPresses([this](QPoint place) { m_presses.append(place); });
        QVERIFY(press(kBare));
        QTRY_COMPARE(m_presses, (QList {kBare, kBare}));

        m_watch = m_windows->watchPresses([&second](QPoint) { second.reset(); });
        QVERIFY(press(kBare));
        QTRY_VERIFY(!second);
        m_presses.clear();
        QVERIFY(press(kBare));
        QTest::qWait(200);

        QCOMPARE(m_presses, QList<QPoint>());
    }

    void aClickOutsideOfTheInputRegionGoesToWhatIsBelow()
    {
        QWindow below;
        below.setGeometry(400, 300, 200, 200);
        ClickCounter belowClicks(below);
        below.show();
        QVERIFY(QTest::qWaitForWindowExposed(&below));
        QWindow above;
        above.setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
        above.setGeometry(400, 300, 200, 200);
        ClickCounter aboveClicks(above);
        above.show();
        QVERIFY(QTest::qWaitForWindowExposed(&above));

        m_windows->setInputRegion(above, QRegion(0, 0, 100, 200));

        const auto corner = above.position();
        QVERIFY(press(corner + QPoint(50, 100)));
        QTRY_COMPARE(aboveClicks.count, 1);
        QVERIFY(press(corner + QPoint(150, 100)));
        QTRY_COMPARE(belowClicks.count, 1);
        QCOMPARE(aboveClicks.count, 1);
    }

    void aListenerAfterAnEndHearsAgain()
    {
        watch();
        m_watch.reset();
        watch();

        QVERIFY(press(kBare));

        QTRY_COMPARE(m_presses, QList {kBare});
    }

    void aWindowSystemThatIsGoneHearsNothing()
    {
        watch();
        m_windows.reset();

        QVERIFY(press(kBare));
        QTest::qWait(200);

        QCOMPARE(m_presses, QList<QPoint>());
    }

    void placesAreInTheProgramsOwnUnits()
    {
        QProcess child;
        auto scaled = QProcessEnvironment::systemEnvironment();
        scaled.insert(u"QT_SCALE_FACTOR"_s, u"2"_s);
        child.setProcessEnvironment(scaled);
        child.start(QCoreApplication::applicationFilePath(), {u"--print-press"_s});
        QVERIFY(child.waitForReadyRead());
        QCOMPARE(child.readAllStandardOutput(), "ready\n");

        QVERIFY(press({640, 480}));

        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAllStandardOutput(), "320 240\n");
    }

private:
    void watch()
    {
        m_watch = m_windows->watchPresses([this](QPoint place) { m_presses.append(place); });
    }

    /// Where no window is.
    static constexpr QPoint kBare {1000, 600};

    std::unique_ptr<WindowSystem> m_windows;
    std::unique_ptr<PressWatch> m_watch;
    QList<QPoint> m_presses;
};

int main(int argumentCount, char** arguments)
{
    QGuiApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == u"--print-press"_s) {
        const auto windows = sessionWindowSystem({});
        const auto watch = windows->watchPresses([](QPoint place) {
            std::printf("%d %d\n", place.x(), place.y());
            QCoreApplication::quit();
        });
        std::puts("ready");
        std::fflush(stdout);
        return QGuiApplication::exec();
    }
    X11WindowSystemTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "X11WindowSystemTest.moc"
