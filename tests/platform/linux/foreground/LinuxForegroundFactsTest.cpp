#include "platform/linux/foreground/LinuxForegroundFacts.h"

#include "support/FakeServices.h"
#include "support/PlainWindow.h"
#include "support/VirtualDesktop.h"
#include "support/WindowManager.h"

#include <QDBusMetaType>
#include <QGuiApplication>
#include <QProcess>
#include <QTest>
#include <QWindow>

#include <cstdio>
#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

QDBusConnection nowhere()
{
    return QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);
}

LinuxForegroundFacts facts(const QString& name = {}, const QString& value = {})
{
    QProcessEnvironment environment;
    if (!name.isEmpty())
        environment.insert(name, value);
    return LinuxForegroundFacts(environment, nowhere, nowhere);
}

QString textOf(const std::optional<qint64>& number)
{
    return number ? QString::number(*number) : u"-"_s;
}

/// The windows as "owner layer width x height", the topmost first.
QStringList listed()
{
    const auto windows = facts().windows();
    if (!windows)
        return {u"unknown"_s};
    QStringList texts;
    for (const auto& [owner, layer, size] : *windows)
        texts.append(u"%1 %2 %3x%4"_s.arg(textOf(owner), textOf(layer))
                .arg(size.value_or(QSizeF()).width())
                .arg(size.value_or(QSizeF()).height()));
    return texts;
}

PlainWindow::Properties window(quint32 process, const std::vector<QByteArray>& types = {},
    const std::vector<QByteArray>& states = {}, QSize size = {200, 100})
{
    return {"main", "Sketcher", types, states, size, process};
}

bool click(const PlainWindow& window)
{
    // Openbox shows the workspace in the middle of the screen after a change.
    return QTest::qWaitFor([&window] { return window.isShown(); })
        && VirtualDesktop::click(window.place().topLeft() + QPoint(5, 5));
}

} // namespace

/// Needs a display with a window manager.
class LinuxForegroundFactsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QCOMPARE(QGuiApplication::platformName(), u"xcb"_s); }

    void cleanup() { QTRY_COMPARE(listed(), QStringList()); }

    void theApplicationInFrontIsTheOneWithTheKeyboard()
    {
        const PlainWindow first(window(4001));
        QTRY_COMPARE(listed().size(), 1);
        QVERIFY(click(first));
        QTRY_COMPARE(facts().frontApplication(), 4001);

        const PlainWindow second(window(4002, {}, {}, {300, 200}));
        QTRY_COMPARE(listed().size(), 2);
        QVERIFY(click(second));

        QTRY_COMPARE(facts().frontApplication(), 4002);
        QCOMPARE(facts().windows()->front().owner, 4002);
    }

    void aWindowThatNamesNoProcessIsAnApplicationOfItsOwn()
    {
        const PlainWindow nameless(PlainWindow::Properties {"main", "Sketcher", {}, {}});
        const PlainWindow wrong(window(0));
        const PlainWindow impossible(window(0x80000000));
        QTRY_COMPARE(listed().size(), 3);

        auto windows = listed();
        windows.sort();

        QStringList expected;
        for (const auto* const one : {&nameless, &wrong, &impossible})
            expected.append(u"-%1 0 200x100"_s.arg(one->id()));
        expected.sort();
        QCOMPARE(windows, expected);
        QVERIFY(click(nameless));
        QTRY_COMPARE(facts().frontApplication(), -qint64 {nameless.id()});
    }

    void withoutAWindowThatHasTheKeyboardNoApplicationIsInFront()
    {
        QTRY_COMPARE(textOf(facts().frontApplication()), u"-"_s);
    }

    void windowsAreListedWithTheTopmostFirst()
    {
        const PlainWindow lower(window(4001));
        QTRY_COMPARE(listed().size(), 1);
        const PlainWindow upper(window(4002, {}, {}, {300, 200}));
        QTRY_COMPARE(listed(), QStringList({u"4002 0 300x200"_s, u"4001 0 200x100"_s}));

        QVERIFY(click(lower));

        QTRY_COMPARE(listed(), QStringList({u"4001 0 200x100"_s, u"4002 0 300x200"_s}));
    }

    void aFullScreenWindowIsOnTheOrdinaryLayerWhateverItsOtherStates()
    {
        const PlainWindow game(
            window(4001, {}, {"_NET_WM_STATE_FULLSCREEN", "_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR"}));

        QTRY_COMPARE(listed(), QStringList {u"4001 0 1280x720"_s});
    }

    void theLayerFollowsTheTypeOfTheWindow_data()
    {
        QTest::addColumn<QList<QByteArray>>("types");
        QTest::addColumn<int>("layer");

        const auto row = [](const char* name, const QList<QByteArray>& types, int layer) {
            QTest::newRow(name) << types << layer;
        };
        row("none", {}, 0);
        row("normal", {"_NET_WM_WINDOW_TYPE_NORMAL"}, 0);
        row("dialogue", {"_NET_WM_WINDOW_TYPE_DIALOG"}, 0);
        row("utility", {"_NET_WM_WINDOW_TYPE_UTILITY"}, 0);
        row("one that nobody knows", {"_EXAMPLE_TYPE"}, 0);
        row("one that nobody knows before another", {"_EXAMPLE_TYPE", "_NET_WM_WINDOW_TYPE_DOCK"}, 25);
        row("two", {"_NET_WM_WINDOW_TYPE_NORMAL", "_NET_WM_WINDOW_TYPE_DOCK"}, 0);
        row("dock", {"_NET_WM_WINDOW_TYPE_DOCK"}, 25);
        row("toolbar", {"_NET_WM_WINDOW_TYPE_TOOLBAR"}, 25);
        row("menu", {"_NET_WM_WINDOW_TYPE_MENU"}, 25);
        row("splash screen", {"_NET_WM_WINDOW_TYPE_SPLASH"}, 25);
        row("tooltip", {"_NET_WM_WINDOW_TYPE_TOOLTIP"}, 25);
        row("notification", {"_NET_WM_WINDOW_TYPE_NOTIFICATION"}, 25);
    }

    void theLayerFollowsTheTypeOfTheWindow()
    {
        QFETCH(const QList<QByteArray>, types);
        QFETCH(const int, layer);
        const PlainWindow one(window(4001, {types.begin(), types.end()}));

        QTRY_COMPARE(listed(), QStringList {u"4001 %1 200x100"_s.arg(layer)});
    }

    void theBackgroundOfTheDesktopIsNoWindow()
    {
        const PlainWindow background(window(4001, {"_NET_WM_WINDOW_TYPE_DESKTOP"}));
        const PlainWindow regular(window(4002));

        QTRY_COMPARE(listed(), QStringList {u"4002 0 200x100"_s});
        QTest::qWait(200);
        QCOMPARE(listed(), QStringList {u"4002 0 200x100"_s});
    }

    void aMinimisedWindowIsNotOnTheScreen()
    {
        PlainWindow one(window(4001));
        QTRY_COMPARE(listed().size(), 1);

        one.minimise();

        QTRY_COMPARE(listed(), QStringList());
    }

    void windowsOfOtherWorkspacesAreNotOnTheScreen()
    {
        auto elsewhere = window(4001);
        elsewhere.workspace = 1;
        auto everywhere = window(4002);
        everywhere.workspace = 0xFFFFFFFF;
        const PlainWindow first(elsewhere);
        const PlainWindow second(everywhere);
        const PlainWindow here(window(4003));
        QTRY_COMPARE(listed(), QStringList({u"4003 0 200x100"_s, u"4002 0 200x100"_s}));

        QVERIFY(VirtualDesktop::run(u"xdotool"_s, {u"set_desktop"_s, u"1"_s}));
        QTRY_COMPARE(listed(), QStringList({u"4002 0 200x100"_s, u"4001 0 200x100"_s}));
        QVERIFY(VirtualDesktop::run(u"xdotool"_s, {u"set_desktop"_s, u"0"_s}));
    }

    void theProgramsOwnWindowsCountLikeOthers()
    {
        QWindow own;
        own.resize(240, 120);
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));

        const auto process = QCoreApplication::applicationPid();
        QTRY_COMPARE(listed(), QStringList {u"%1 0 240x120"_s.arg(process)});
        own.requestActivate();
        QTRY_COMPARE(facts().frontApplication(), process);
    }

    void ofAWaylandSessionNothingIsSaid_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::newRow("a compositor") << u"WAYLAND_DISPLAY"_s << u"wayland-0"_s;
        QTest::newRow("the type of the session") << u"XDG_SESSION_TYPE"_s << u"wayland"_s;
    }

    void ofAWaylandSessionNothingIsSaid()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, value);
        const PlainWindow one(window(4001));
        QTRY_COMPARE(listed().size(), 1);
        QVERIFY(click(one));
        QTRY_COMPARE(facts().frontApplication(), 4001);

        const auto wayland = facts(name, value);

        QCOMPARE(wayland.frontApplication(), std::nullopt);
        QVERIFY(!wayland.windows());
        QVERIFY(wayland.screens().empty());
    }

    void onlyInAWaylandSessionItIsAskedWhoKeepsItAwake()
    {
        qDBusRegisterMetaType<QList<QStringList>>();
        const auto service = u"org.kde.Solid.PowerManagement.PolicyAgent"_s;
        const auto agent = u"/org/kde/Solid/PowerManagement/PolicyAgent "_s + service;
        const QProcessEnvironment x11;
        QProcessEnvironment wayland;
        wayland.insert(u"WAYLAND_DISPLAY"_s, u"wayland-0"_s);
        const auto keptAwake = [](const QProcessEnvironment& environment) {
            return LinuxForegroundFacts(environment, &QDBusConnection::sessionBus, nowhere).isKeptAwakeForViewing();
        };
        QCOMPARE(keptAwake(wayland), std::nullopt);
        FakeServices services;
        services.answer(service, agent + u".HasInhibition"_s, true);

        services.answer(service, agent + u".ListInhibitions"_s,
            QVariant::fromValue(QList<QStringList> {{u"mpv"_s, u"Playing video"_s}}));
        QCOMPARE(keptAwake(x11), std::nullopt);
        QCOMPARE(services.questions(), QStringList());
        QCOMPARE(keptAwake(wayland), true);

        services.answer(service, agent + u".ListInhibitions"_s, QVariant::fromValue(QList<QStringList>()));
        QCOMPARE(keptAwake(wayland), false);
    }

    void withoutADisplayNothingIsSaid()
    {
        QProcess child;
        auto offscreen = QProcessEnvironment::systemEnvironment();
        offscreen.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        child.setProcessEnvironment(offscreen);

        child.start(QCoreApplication::applicationFilePath(), {u"--print"_s});

        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAllStandardOutput(), "- unknown 0\n");
        QCOMPARE(child.exitCode(), 0);
    }

    void whatAWindowManagerLeftBehindIsNoFact()
    {
        WindowManager manager(u"openbox"_s);
        QVERIFY(manager.start());
        const PlainWindow one(window(4001));
        QTRY_COMPARE(listed().size(), 1);
        QVERIFY(click(one));
        QTRY_COMPARE(facts().frontApplication(), 4001);

        manager.crash();

        QTRY_COMPARE(listed(), QStringList {u"unknown"_s});
        QCOMPARE(facts().frontApplication(), std::nullopt);
        m_next = std::make_unique<WindowManager>(u"openbox"_s);
        QVERIFY(m_next->start());
        QTRY_COMPARE(listed().size(), 1);
    }

    void theScreensAreTheDisplaysMonitors()
    {
        QCOMPARE(facts().screens(), std::vector<QSizeF>({{1280, 720}}));

        QVERIFY(
            VirtualDesktop::run(u"xrandr"_s, {u"--setmonitor"_s, u"left"_s, u"800/210x720/210+0+0"_s, u"screen"_s}));
        QVERIFY(
            VirtualDesktop::run(u"xrandr"_s, {u"--setmonitor"_s, u"right"_s, u"480/210x720/210+800+0"_s, u"none"_s}));

        QCOMPARE(facts().screens(), std::vector<QSizeF>({{800, 720}, {480, 720}}));
        QVERIFY(VirtualDesktop::run(u"xrandr"_s, {u"--delmonitor"_s, u"right"_s}));
        QVERIFY(VirtualDesktop::run(u"xrandr"_s, {u"--delmonitor"_s, u"left"_s}));
    }

private:
    /// Manages what is left of the test.
    std::unique_ptr<WindowManager> m_next;
};

int main(int argumentCount, char** arguments)
{
    QGuiApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == u"--print"_s) {
        std::printf("%s %s %zu\n", qPrintable(textOf(facts().frontApplication())), qPrintable(listed().join(u' ')),
            facts().screens().size());
        return 0;
    }
    LinuxForegroundFactsTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "LinuxForegroundFactsTest.moc"
