#include "platform/linux/windows/QtWindowSystem.h"
#include "platform/linux/windows/SessionWindowSystem.h"

#include <QTest>
#include <QWindow>

using namespace orvella;
using namespace Qt::StringLiterals;

/// Without a screen; what a compositor makes of it is Qt's affair.
class QtWindowSystemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qunsetenv("XDG_ACTIVATION_TOKEN"); }

    void cleanup() { qunsetenv("XDG_ACTIVATION_TOKEN"); }

    void withoutAScreenNothingIsComposedAndWindowsStayWhereTheyArePut()
    {
        const auto windows = sessionWindowSystem({});

        QVERIFY(!windows->isCompositing());
        QVERIFY(windows->placesWindows());
    }

    void onWaylandEverythingIsComposedAndTheDesktopPlacesWindows()
    {
        const QtWindowSystem windows(QtWindowSystem::Kind::wayland, {});

        QVERIFY(windows.isCompositing());
        QVERIFY(!windows.placesWindows());
    }

    void anActivatedWindowHasTheKeyboard()
    {
        QWindow first;
        QWindow second;
        first.show();
        second.show();
        QtWindowSystem windows(QtWindowSystem::Kind::offscreen, {});

        windows.activate(first);
        QTRY_VERIFY(first.isActive());

        windows.activate(second);
        QTRY_VERIFY(second.isActive());
    }

    void theTokenIsWhereQtLooksForItWhenTheWindowIsActivated()
    {
        QWindow window;
        QtWindowSystem windows(QtWindowSystem::Kind::wayland, [] { return u"token of the click"_s; });

        windows.activate(window);

        QCOMPARE(qEnvironmentVariable("XDG_ACTIVATION_TOKEN"), u"token of the click"_s);
    }

    void withoutATokenTheEnvironmentStaysAsItIs()
    {
        QWindow window;
        QtWindowSystem empty(QtWindowSystem::Kind::wayland, [] { return QString(); });
        QtWindowSystem absent(QtWindowSystem::Kind::wayland, {});

        empty.activate(window);
        absent.activate(window);

        QVERIFY(!qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
    }

    void watchingPressesDoesNothing()
    {
        QtWindowSystem windows(QtWindowSystem::Kind::wayland, {});
        int presses = 0;

        const auto watch = windows.watchPresses([&presses](QPoint) { ++presses; });

        QCOMPARE(presses, 0);
    }
};

QTEST_MAIN(QtWindowSystemTest)

#include "QtWindowSystemTest.moc"
