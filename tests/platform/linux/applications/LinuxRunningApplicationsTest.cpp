#include "platform/linux/applications/LinuxRunningApplications.h"

#include "platform/linux/applications/X11Windows.h"
#include "platform/linux/x11/X11Display.h"
#include "support/ControlGroupTree.h"
#include "support/PlainWindow.h"

#include <QDir>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <optional>

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

/// A system without units.
ApplicationUnits noUnits()
{
    return ApplicationUnits(u"/nonexistent"_s, u"/nonexistent"_s);
}

} // namespace

/// Needs a display with a window manager.
class LinuxRunningApplicationsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::platformName(), u"xcb"_s);
        QFile file(m_folder.filePath(u"org.example.Paint.desktop"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\nName=Paint\nName[de]=Malen\nStartupWMClass=paint-window\n");
        ControlGroupTree::write(m_folder.filePath(u"org.example.Write.desktop"_s),
            "[Desktop Entry]\nType=Application\nName=Write\nExec=/usr/bin/example-writer %F\n");
        ControlGroupTree::write(
            m_folder.filePath(u"io.orvella.Orvella.desktop"_s), "[Desktop Entry]\nType=Application\nName=Orvella\n");
    }

    void init() { m_units.emplace(); }

    void cleanup()
    {
        m_units.emplace();
        QTRY_COMPARE(listed(applications()), QStringList());
    }

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

    void anotherOneOfTheProgramIsNotListed()
    {
        const PlainWindow own({"io.orvella.orvella", "orvella", {}, {}});
        const PlainWindow regular({"main", "Sketcher", {}, {}});

        QTRY_COMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
        QTest::qWait(300);
        QCOMPARE(listed(applications()), QStringList {u"Sketcher|Sketcher"_s});
    }

    void aWindowMayNameItsApplicationItself_data()
    {
        QTest::addColumn<QByteArray>("property");
        QTest::newRow("as GTK has it") << QByteArray("_GTK_APPLICATION_ID");
        QTest::newRow("as KDE has it") << QByteArray("_KDE_NET_WM_DESKTOP_FILE");
    }

    void aWindowMayNameItsApplicationItself()
    {
        QFETCH(const QByteArray, property);
        PlainWindow::Properties properties {"main", "Sketcher", {}, {}};
        properties.texts.emplace_back(property, "org.example.Paint");
        const PlainWindow window(properties);

        QTRY_COMPARE(listed(applications()), QStringList {u"org.example.Paint|Malen"_s});
    }

    void applicationsOfUnitsComeAfterThoseOfWindows()
    {
        const PlainWindow window({"main", "Sketcher", {}, {}});
        m_units->add(u"app.slice/app-gnome-org.example.Paint-12.scope"_s);

        QTRY_COMPARE(listed(applications()), QStringList({u"Sketcher|Sketcher"_s, u"org.example.Paint|Malen"_s}));
    }

    void anApplicationWithWindowsAndUnitsCountsOnce()
    {
        const PlainWindow first({"main", "Paint-Window", {}, {}});
        const PlainWindow second({"other", "paint-window", {}, {}});
        m_units->add(u"app.slice/app-gnome-org.example.Paint-12.scope"_s);
        m_units->add(u"app.slice/app-org.example.Paint@1f.service"_s);

        QTRY_COMPARE(listed(applications()), QStringList {u"org.example.Paint|Malen"_s});
        QTest::qWait(300);
        QCOMPARE(listed(applications()), QStringList {u"org.example.Paint|Malen"_s});
    }

    void aWindowThatNoEntryNamesIsTheUnitsThatIsCalledLikeIt_data()
    {
        QTest::addColumn<QByteArray>("windowClass");
        QTest::newRow("the last part of its ID") << QByteArray("Write");
        QTest::newRow("the program that its entry starts") << QByteArray("Example-Writer");
    }

    void aWindowThatNoEntryNamesIsTheUnitsThatIsCalledLikeIt()
    {
        QFETCH(const QByteArray, windowClass);
        const PlainWindow window({"main", windowClass, {}, {}});
        const auto alone = QString::fromLatin1(windowClass + '|' + windowClass);
        QTRY_COMPARE(listed(applications()), QStringList {alone});

        m_units->add(u"app.slice/app-org.example.Write-12.scope"_s);

        QCOMPARE(listed(applications()), QStringList {u"org.example.Write|Write"_s});
    }

    void realProgramsAreListedWhileTheyRun_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("GTK, with an entry of its own")
            << u"tint2conf"_s << QStringList {u"tint2conf|Leistenverwaltung"_s};
        QTest::newRow("Qt, without an entry") << u"/usr/lib/qt6/bin/linguist"_s << QStringList {u"Linguist|Linguist"_s};
    }

    void realProgramsAreListedWhileTheyRun()
    {
        QFETCH(const QString, program);
        QFETCH(const QStringList, expected);
        const LinuxRunningApplications applications(environment(), {u"/usr/share/applications"_s}, noUnits());
        QProcess other;
        other.start(u"xev"_s, {});
        QTRY_COMPARE(applications.list().size(), 1U);
        const auto before = listed(applications);
        QProcess process;
        process.start(program, {});
        QVERIFY(process.waitForStarted());

        QTRY_COMPARE_WITH_TIMEOUT(listed(applications), before + expected, 20'000);

        process.kill();
        QVERIFY(process.waitForFinished());
        QTRY_COMPARE(listed(applications), before);
        other.kill();
        QVERIFY(other.waitForFinished());
    }

    void aRealPanelIsNotListed()
    {
        QProcess panel;
        panel.start(u"tint2"_s, {});
        const auto isThere = [] {
            const auto windows = X11Windows::list(*X11Display::current());
            return std::ranges::any_of(windows, [](const auto& window) { return window.instance == u"tint2"; });
        };
        QTRY_VERIFY(isThere());

        QCOMPARE(listed(applications()), QStringList());

        panel.kill();
        QVERIFY(panel.waitForFinished());
    }

    void inAWaylandSessionOnlyTheUnitsAreListed_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::newRow("a compositor") << u"WAYLAND_DISPLAY"_s << u"wayland-0"_s;
        QTest::newRow("the type of the session") << u"XDG_SESSION_TYPE"_s << u"wayland"_s;
    }

    void inAWaylandSessionOnlyTheUnitsAreListed()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, value);
        const PlainWindow window({"main", "Sketcher", {}, {}});
        QTRY_COMPARE(listed(applications()).size(), 1);
        const auto wayland = applications(environment(name, value));

        QCOMPARE(listed(wayland), QStringList());

        m_units->add(u"app.slice/app-org.example.Paint-12.scope"_s);
        QCOMPARE(listed(wayland), QStringList {u"org.example.Paint|Malen"_s});
    }

    void inAFlatpakTheListIsEmpty()
    {
        const PlainWindow window({"main", "Sketcher", {}, {}});
        QTRY_COMPARE(listed(applications()).size(), 1);
        m_units->add(u"app.slice/app-org.example.Paint-12.scope"_s);

        QCOMPARE(listed(applications(environment(u"FLATPAK_ID"_s, u"io.orvella.Orvella"_s))), QStringList());
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
    [[nodiscard]] LinuxRunningApplications applications(const QProcessEnvironment& of = environment()) const
    {
        return LinuxRunningApplications(
            of, {m_folder.path()}, ApplicationUnits(m_units->processes(), m_units->groups()));
    }

    QTemporaryDir m_folder;
    std::optional<ControlGroupTree> m_units;
};

int main(int argumentCount, char** arguments)
{
    QGuiApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == u"--count"_s) {
        std::fputs(QByteArray::number(LinuxRunningApplications(environment(), {}, noUnits()).list().size()).constData(),
            stdout);
        return 0;
    }
    LinuxRunningApplicationsTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "LinuxRunningApplicationsTest.moc"
