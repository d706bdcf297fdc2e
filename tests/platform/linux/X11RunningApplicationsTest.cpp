#include "platform/linux/X11RunningApplications.h"

#include "support/PlainWindow.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What is listed, one text for each application.
QStringList listed(const RunningApplications& applications)
{
    QStringList texts;
    for (const auto& application : applications.list()) {
        texts.append(application.identifier.value_or(u"-"_s) + u"|"_s + application.name.value_or(u"-"_s)
            + (application.isRegular ? QString() : u"|not regular"_s));
    }
    return texts;
}

QProcessEnvironment environment(const QString& name = {}, const QString& value = {})
{
    QProcessEnvironment made;
    made.insert(u"LANG"_s, u"de_DE.UTF-8"_s);
    if (!name.isEmpty())
        made.insert(name, value);
    return made;
}

} // namespace

/// Needs a display with a window manager.
class X11RunningApplicationsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), u"xcb"_s);
        QFile file(m_folder.filePath(u"org.example.Paint.desktop"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=Paint\nName[de]=Malen\nStartupWMClass=paint-window\n");
    }

    void cleanup() { QTRY_COMPARE(listed(applications()), QStringList()); }

    void anApplicationIsNamedByItsDesktopEntryInTheViewersLanguage()
    {
        const PlainWindow window({"main", "Paint-Window", {}, {}});

        QTRY_COMPARE(listed(applications()), QStringList {u"org.example.Paint|Malen"_s});
    }

    void anApplicationWithoutADesktopEntryIsNamedByItsClass()
    {
        const PlainWindow window({"main", "Sketcher", {}, {}});

        QTRY_COMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
    }

    void anApplicationIsListedOnceHoweverManyWindowsItHas()
    {
        const PlainWindow first({"main", "Paint-Window", {}, {}});
        QTRY_COMPARE(listed(applications()).size(), 1);
        const PlainWindow second({"other", "paint-window", {"_NET_WM_WINDOW_TYPE_DIALOG"}, {}});
        const PlainWindow third({"main", "Sketcher", {"_NET_WM_WINDOW_TYPE_NORMAL"}, {}});

        QTRY_COMPARE(listed(applications()), QStringList({u"org.example.Paint|Malen"_s, u"Sketcher|Sketcher"_s}));
    }

    void windowsWithoutAClassCountEachForItself()
    {
        const PlainWindow first({});
        const PlainWindow second({});

        QTRY_COMPARE(listed(applications()), QStringList({u"-|-"_s, u"-|-"_s}));
    }

    void panelsAndWhatKeepsOffTheTaskBarAreNotListed()
    {
        const PlainWindow dock({"panel", "Panel", {"_NET_WM_WINDOW_TYPE_DOCK"}, {}});
        const PlainWindow desktop({"desktop", "Desktop", {"_NET_WM_WINDOW_TYPE_DESKTOP"}, {}});
        const PlainWindow splash({"splash", "Splash", {"_NET_WM_WINDOW_TYPE_SPLASH"}, {}});
        const PlainWindow tray({"tray", "Tray", {}, {"_NET_WM_STATE_SKIP_TASKBAR"}});
        const PlainWindow regular({"main", "Sketcher", {}, {}});

        QTRY_COMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
        // The others had at least as long to appear.
        QTest::qWait(300);
        QCOMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
    }

    void theProgramItselfIsNotListed()
    {
        QWindow own;
        own.show();
        QVERIFY(QTest::qWaitForWindowExposed(&own));
        const PlainWindow regular({"main", "Sketcher", {}, {}});

        QTRY_COMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
        QTest::qWait(300);
        QCOMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
    }

    void aRealProgramIsListedWhileItRuns()
    {
        QProcess program;
        program.start(u"xev"_s, {});
        QVERIFY(program.waitForStarted());

        QTRY_COMPARE(listed(applications()).size(), 1);

        program.kill();
        QVERIFY(program.waitForFinished());
    }

    void inAWaylandSessionTheListIsEmpty()
    {
        const PlainWindow window({"main", "Sketcher", {}, {}});
        QTRY_COMPARE(listed(applications()).size(), 1);

        QCOMPARE(listed(X11RunningApplications(environment(u"WAYLAND_DISPLAY"_s, u"wayland-0"_s), {})), QStringList());
        QCOMPARE(listed(X11RunningApplications(environment(u"XDG_SESSION_TYPE"_s, u"wayland"_s), {})), QStringList());
        QCOMPARE(listed(X11RunningApplications(environment(u"XDG_SESSION_TYPE"_s, u"x11"_s), {})).size(), 1);
    }

    void withoutAnX11DisplayTheListIsEmpty()
    {
        QProcess child;
        auto offscreen = QProcessEnvironment::systemEnvironment();
        offscreen.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        child.setProcessEnvironment(offscreen);

        child.start(QCoreApplication::applicationFilePath(), {u"--count"_s});

        QVERIFY(child.waitForFinished());
        QCOMPARE(child.readAllStandardOutput(), "0");
        QCOMPARE(child.exitCode(), 0);
    }

private:
    [[nodiscard]] X11RunningApplications applications() const
    {
        return X11RunningApplications(environment(), {m_folder.path()});
    }

    QTemporaryDir m_folder;
};

int main(int argumentCount, char** arguments)
{
    QGuiApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == u"--count"_s) {
        std::fputs(QByteArray::number(X11RunningApplications(environment(), {}).list().size()).constData(), stdout);
        return 0;
    }
    X11RunningApplicationsTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "X11RunningApplicationsTest.moc"
