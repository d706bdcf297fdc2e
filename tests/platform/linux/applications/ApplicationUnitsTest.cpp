#include "platform/linux/applications/ApplicationUnits.h"

#include "support/ControlGroupTree.h"

#include <QDir>
#include <QTest>

#include <filesystem>
#include <fstream>
#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The likeliest ID of each unit that runs.
QStringList running(const ControlGroupTree& tree)
{
    QStringList ids;
    for (const auto& possible : ApplicationUnits(tree.processes(), tree.groups()).running())
        ids.append(possible.first());
    return ids;
}

} // namespace

class ApplicationUnitsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void unitsOfApplicationsThatHaveProcessesAreRunning()
    {
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-org.kde.konsole-1f.scope"_s);
        tree.add(u"app.slice/app-org.kde.kate-2e.scope"_s, false);
        tree.add(u"app.slice/pipewire.service"_s);
        tree.add(u"session.slice/app-org.kde.plasmashell-3.scope"_s);
        tree.add(u"app-org.kde.elsewhere-4.scope"_s);

        QCOMPARE(running(tree), QStringList {u"org.kde.konsole"_s});
    }

    void slicesInSlicesAreRead()
    {
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-gnome.slice/app-gnome-org.gnome.Maps-12.slice/app-gnome-org.gnome.Maps-12.scope"_s);
        tree.add(uR"(app.slice/app-dbus\x2d:1.2\x2dorg.gnome.Nautilus.slice/dbus-:1.2-org.gnome.Nautilus@0.service)"_s);

        QCOMPARE(running(tree), QStringList({u"org.gnome.Maps"_s, u"org.gnome.Nautilus"_s}));
    }

    void aServiceInTheSliceOfAnApplicationIsThatApplication()
    {
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-org.gnome.Terminal.slice/gnome-terminal-server.service"_s);

        QCOMPARE(running(tree), QStringList {u"org.gnome.Terminal"_s});
    }

    void whatAnApplicationLeftRunningInItsSliceIsNotTheApplication()
    {
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-org.gnome.Terminal.slice/gnome-terminal-server.service"_s, false);
        tree.add(u"app.slice/app-org.gnome.Terminal.slice/vte-spawn-3b1f0c9e.scope"_s);
        tree.add(u"app.slice/app-org.gnome.Terminal.slice/app-org.gnome.Terminal@autostart.service"_s);

        QCOMPARE(running(tree), QStringList());
    }

    void groupsInAUnitAreTheUnits()
    {
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-org.kde.konsole-1.scope"_s);
        tree.add(u"app.slice/app-org.kde.konsole-1.scope/app-org.example.Other-2.scope"_s);

        QCOMPARE(running(tree), QStringList {u"org.kde.konsole"_s});
    }

    void theManagerIsFoundFromWhereTheProgramRuns_data()
    {
        QTest::addColumn<QString>("own");
        QTest::addColumn<bool>("isFound");

        const auto user = u"/user.slice/user-1000.slice"_s;
        QTest::newRow("an application") << user + u"/user@1000.service/app.slice/app-a-1.scope"_s << true;
        QTest::newRow("a part of the desktop") << user + u"/user@1000.service/session.slice/x.service"_s << true;
        QTest::newRow("a session beside the manager") << user + u"/session-2.scope"_s << true;
        QTest::newRow("another user's session") << u"/user.slice/user-1001.slice/session-3.scope"_s << false;
        QTest::newRow("a system service") << u"/system.slice/cron.service"_s << false;
        QTest::newRow("a container") << u"/"_s << false;
        QTest::newRow("outside of what is seen") << u"/../../user.slice/user-1000.slice/session-2.scope"_s << false;
        QTest::newRow("up and down again") << user + u"/user@1000.service/../../.."_s << false;
        QTest::newRow("no path") << u""_s << false;
    }

    void theManagerIsFoundFromWhereTheProgramRuns()
    {
        QFETCH(const QString, own);
        QFETCH(const bool, isFound);
        const ControlGroupTree tree(own);
        tree.add(u"app.slice/app-org.kde.konsole-1.scope"_s);

        QCOMPARE(!running(tree).isEmpty(), isFound);
    }

    void theGroupOfVersion2IsTheOneThatCounts()
    {
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-org.kde.konsole-1.scope"_s);
        ControlGroupTree::write(tree.processes() + u"/self/cgroup"_s,
            "1:name=systemd:/elsewhere\n0::/user.slice/user-1000.slice/session-2.scope\n");
        QCOMPARE(running(tree), QStringList {u"org.kde.konsole"_s});

        ControlGroupTree::write(
            tree.processes() + u"/self/cgroup"_s, "1:name=systemd:/user.slice/user-1000.slice/session-2.scope\n");
        QCOMPARE(running(tree), QStringList());
    }

    void withoutSuchFilesNothingIsRunning()
    {
        const QTemporaryDir empty;
        QVERIFY(ApplicationUnits(empty.path(), empty.path()).running().empty());

        QVERIFY(QDir(empty.path()).mkpath(u"self/cgroup"_s));
        QVERIFY(ApplicationUnits(empty.path(), empty.path()).running().empty());
    }

    void linksAreNotFollowed()
    {
        const ControlGroupTree elsewhere;
        elsewhere.add(u"app.slice/app-org.kde.konsole-1.scope"_s);
        const ControlGroupTree tree;
        tree.add(u"app.slice/app-org.kde.kate-1.scope"_s);
        const auto slice = tree.manager() + u"/app.slice/"_s;
        const auto other = elsewhere.manager() + u"/app.slice"_s;
        QVERIFY(QFile::link(other + u"/app-org.kde.konsole-1.scope"_s, slice + u"app-org.kde.konsole-1.scope"_s));
        QVERIFY(QFile::link(other, slice + u"app-all.slice"_s));
        QVERIFY(QDir(slice).mkpath(u"app-org.kde.okular-1.scope"_s));
        QVERIFY(QFile::link(other + u"/app-org.kde.konsole-1.scope/cgroup.events"_s,
            slice + u"app-org.kde.okular-1.scope/cgroup.events"_s));
        QCOMPARE(running(tree), QStringList {u"org.kde.kate"_s});

        QVERIFY(QDir(slice).removeRecursively());
        QVERIFY(QFile::link(other, tree.manager() + u"/app.slice"_s));
        QCOMPARE(running(tree), QStringList());
    }

    void whatIsNoFileOfAGroupIsPassedOver()
    {
        const ControlGroupTree tree;
        const auto unit = [&tree](
                              const QString& name) { return tree.manager() + u"/app.slice/app-%1.scope"_s.arg(name); };
        QVERIFY(QDir().mkpath(unit(u"none-1"_s)));
        QVERIFY(QDir().mkpath(unit(u"folder-1"_s) + u"/cgroup.events"_s));
        QVERIFY(QDir().mkpath(unit(u"pipe-1"_s)));
        QCOMPARE(::mkfifo(QFile::encodeName(unit(u"pipe-1"_s) + u"/cgroup.events"_s).constData(), 0600), 0);
        ControlGroupTree::write(unit(u"file-1"_s), "populated 1\n");
        ControlGroupTree::write(unit(u"bytes-1"_s) + u"/cgroup.events"_s, QByteArray(100'000, '\xff'));
        ControlGroupTree::write(unit(u"ten-1"_s) + u"/cgroup.events"_s, "populated 10\n");
        ControlGroupTree::write(unit(u"other-1"_s) + u"/cgroup.events"_s, "unpopulated 1\n");
        ControlGroupTree::write(unit(u"last-1"_s) + u"/cgroup.events"_s, "frozen 0\npopulated 1\n");

        QCOMPARE(running(tree), QStringList {u"last"_s});
    }

    void oddNamesStandForNoOthers()
    {
        const ControlGroupTree tree;
        namespace fs = std::filesystem;
        const fs::path slice((tree.manager() + u"/app.slice"_s).toStdString());
        for (const auto* const name : {"app-\xff\xfe-1.scope", "app-a\nb-1.scope", R"(app-\x00\x2f..\x2f..-1.scope)"}) {
            fs::create_directories(slice / name);
            std::ofstream(slice / name / "cgroup.events") << "populated 1\n";
        }
        tree.add(u"app.slice/app-"_s + QString(200, u'-') + u"1.scope"_s);

        QCOMPARE(
            running(tree), QStringList({QString(), QString(QChar(0)) + u"/../.."_s, u"a\nb"_s, u"\uFFFD\uFFFD"_s}));
        // A name that is no text is beyond what tidies up after the test.
        fs::remove_all(slice);
    }

    void aHugeTreeIsReadInPart()
    {
        const ControlGroupTree tree;
        const auto slice = tree.manager() + u"/app.slice"_s;
        for (int number = 0; number < 2'100; ++number)
            ControlGroupTree::write(slice + u"/app-many-%1.scope/cgroup.events"_s.arg(number), "populated 1\n");

        QCOMPARE(running(tree).size(), 2'000);
    }

    void aDeepTreeIsReadInPart()
    {
        const ControlGroupTree tree;
        auto slice = u"app.slice"_s;
        for (int level = 1; level <= 60; ++level) {
            slice += u"/app-x.slice"_s;
            tree.add(slice + u"/app-level-1.scope"_s);
        }

        QCOMPARE(running(tree).size(), 8);
    }
};

QTEST_GUILESS_MAIN(ApplicationUnitsTest)

#include "ApplicationUnitsTest.moc"
