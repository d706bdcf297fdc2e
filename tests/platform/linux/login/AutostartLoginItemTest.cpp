#include "platform/linux/login/AutostartLoginItem.h"

#include "platform/linux/files/DesktopEntry.h"
#include "support/OrdinaryUser.h"

#include <QCoreApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class AutostartLoginItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder.emplace();
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
        QVERIFY(QDir(m_folder->path()).mkdir(u"bin"_s));
        QVERIFY(QFile::link(QCoreApplication::applicationFilePath(), program()));
    }

    void withoutAnEntryTheItemIsNotRegistered() { QCOMPARE(item().status(), LoginItem::Status::notRegistered); }

    void aRegisteredItemIsEnabled()
    {
        auto registered = item();

        QVERIFY(registered.registerItem());

        QCOMPARE(registered.status(), LoginItem::Status::enabled);
        const auto entry = DesktopEntry::read(path());
        QVERIFY(entry);
        QCOMPARE(entry->string(u"Type"_s), u"Application"_s);
        QCOMPARE(entry->string(u"Name"_s), u"Orvella"_s);
        QCOMPARE(entry->string(u"Icon"_s), u"io.orvella.Orvella"_s);
        QCOMPARE(entry->string(u"TryExec"_s), program());
        QCOMPARE(entry->string(u"Exec"_s), u"\"%1\""_s.arg(program()));
    }

    void argumentsWithSpecialCharactersStayArguments()
    {
        AutostartLoginItem withArguments({autostart(), {program(), u"--profile"_s, u"/home/a b/$x%1\\"_s}, {}});

        QVERIFY(withArguments.registerItem());

        QCOMPARE(DesktopEntry::read(path())->string(u"Exec"_s),
            u'"' + program() + u"\" \"--profile\" \"/home/a b/\\$x%%1\\\\\""_s);
    }

    void aProgramOfAnyNameIsFoundAgain_data()
    {
        QTest::addColumn<QString>("name");

        QTest::newRow("a percent sign") << u"100% ads"_s;
        QTest::newRow("a field code") << u"%F"_s;
        QTest::newRow("spaces around it") << u" ads "_s;
        QTest::newRow("a no-break space behind it") << u"ads\u00a0"_s;
        QTest::newRow("quotes and a backslash") << u"\"a\" 'd' $s\\"_s;
    }

    void aProgramOfAnyNameIsFoundAgain()
    {
        QFETCH(const QString, name);
        const auto path = m_folder->path() + u"/bin/"_s + name;
        QVERIFY(QFile::link(QCoreApplication::applicationFilePath(), path));
        AutostartLoginItem named({autostart(), {path}, {}});

        QVERIFY(named.registerItem());

        QCOMPARE(named.status(), LoginItem::Status::enabled);
    }

    void anUnregisteredItemIsGone()
    {
        auto registered = item();
        QVERIFY(registered.registerItem());

        QVERIFY(registered.unregisterItem());

        QCOMPARE(registered.status(), LoginItem::Status::notRegistered);
        QVERIFY(!QFileInfo::exists(path()));
        QVERIFY(registered.unregisterItem());
    }

    void theStatusIsWhatTheSessionWouldDo_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<LoginItem::Status>("status");

        using Status = LoginItem::Status;
        const auto row = [](const char* name, const QString& lines, Status status) {
            QTest::newRow(name) << u"[Desktop Entry]\nType=Application\n"_s + lines << status;
        };
        row("a plain entry", u"Exec=orvella\n"_s, Status::enabled);
        row("hidden", u"Exec=orvella\nHidden=true\n"_s, Status::requiresApproval);
        row("not hidden", u"Exec=orvella\nHidden=false\n"_s, Status::enabled);
        row("off in GNOME", u"Exec=orvella\nX-GNOME-Autostart-enabled=false\n"_s, Status::requiresApproval);
        row("on in GNOME", u"Exec=orvella\nX-GNOME-Autostart-enabled=true\n"_s, Status::enabled);
        row("on in GNOME and hidden", u"Exec=orvella\nX-GNOME-Autostart-enabled=true\nHidden=true\n"_s,
            Status::requiresApproval);
        row("off in MATE", u"Exec=orvella\nX-MATE-Autostart-enabled=false\n"_s, Status::requiresApproval);
        row("a program that is gone", u"Exec=orvella\nTryExec=/nowhere/orvella\n"_s, Status::notFound);
        row("a program that is a folder", u"Exec=orvella\nTryExec=/usr\n"_s, Status::notFound);
        row("a program that may not be run", u"Exec=orvella\nTryExec=/etc/passwd\n"_s, Status::notFound);
        row("a program that is in the PATH", u"Exec=orvella\nTryExec=orvella\n"_s, Status::enabled);
        row("a program that is in no PATH", u"Exec=orvella\nTryExec=orvella-5\n"_s, Status::notFound);
        row("a command that is in no PATH", u"Exec=orvella-5\n"_s, Status::notFound);
        row("a command that is gone", u"Exec=\"/nowhere/orvella\" --autostart\n"_s, Status::notFound);
        row("another build", u"Exec=/nowhere/Orvella-2.0.AppImage\n"_s, Status::notFound);
        row("something before the command", u"Exec=env LANG=C orvella\n"_s, Status::enabled);
        row("in a sandbox", u"Exec=sh /run io.orvella.Orvella\n"_s, Status::enabled);
        row("another program", u"Exec=sh\n"_s, Status::notRegistered);
        row("another program that is off", u"Exec=sh\nHidden=true\n"_s, Status::notRegistered);
        row("an empty command", u"Exec=\n"_s, Status::notRegistered);
        row("no command", u"Name=Orvella\n"_s, Status::notRegistered);
        QTest::newRow("an empty file") << u""_s << Status::notRegistered;
        QTest::newRow("a link") << u"[Desktop Entry]\nType=Link\nExec=orvella\n"_s << Status::notRegistered;
    }

    void theStatusIsWhatTheSessionWouldDo()
    {
        QFETCH(QString, entry);
        QFETCH(LoginItem::Status, status);
        write(entry);

        QCOMPARE(item().status(), status);
    }

    void anEntryMayBeMeantForSomeDesktopsOnly_data()
    {
        QTest::addColumn<QString>("lines");
        QTest::addColumn<QString>("desktop");
        QTest::addColumn<bool>("enabled");
        const auto row = [](const char* name, const QString& lines, const QString& desktop, bool enabled) {
            QTest::newRow(name) << lines << desktop << enabled;
        };
        const auto only = u"OnlyShowIn=XFCE;MATE;\n"_s;
        const auto never = u"NotShowIn=KDE\n"_s;
        const auto both = u"OnlyShowIn=GNOME;\nNotShowIn=Pop;\n"_s;
        const auto override = u"OnlyShowIn=GNOME;\nX-XFCE-Autostart-Override=true\n"_s;
        row("all", u""_s, u"XFCE"_s, true);
        row("all, and no desktop", u""_s, u""_s, true);
        row("this one", only, u"XFCE"_s, true);
        row("one of this one's names", only, u"Xubuntu:XFCE"_s, true);
        row("others", only, u"KDE"_s, false);
        row("some, and no desktop", only, u""_s, false);
        row("another case", only, u"xfce"_s, false);
        row("not this one", never, u"KDE"_s, false);
        row("not another one", never, u"XFCE"_s, true);
        row("not another one, and no desktop", never, u""_s, true);
        row("the first name decides for it", both, u"GNOME:Pop"_s, true);
        row("the first name decides against it", both, u"Pop:GNOME"_s, false);
        row("forced in XFCE", override, u"XFCE"_s, true);
        row("forced in XFCE, elsewhere", override, u"MATE"_s, false);
        row("forced in XFCE against its own exception", u"NotShowIn=XFCE;\nX-XFCE-Autostart-Override=true\n"_s,
            u"XFCE"_s, false);
    }

    void anEntryMayBeMeantForSomeDesktopsOnly()
    {
        QFETCH(const QString, lines);
        QFETCH(const QString, desktop);
        QFETCH(const bool, enabled);
        write(u"[Desktop Entry]\nType=Application\nExec=orvella\n"_s + lines);

        QCOMPARE(item(desktop).status(), enabled ? LoginItem::Status::enabled : LoginItem::Status::requiresApproval);
    }

    void registeringTurnsASwitchedOffEntryOnAgain()
    {
        write(u"[Desktop Entry]\nType=Application\nExec=orvella\nHidden=true\n"_s);
        auto switchedOff = item();

        QVERIFY(switchedOff.registerItem());

        QCOMPARE(switchedOff.status(), LoginItem::Status::enabled);
    }

    void aRefusalIsAFailureAndTheStatusStaysTheRealOne()
    {
        QVERIFY(item().registerItem());
        QFile::setPermissions(autostart(), QFile::Permissions(0x5555));
        const OrdinaryUser user;
        auto refused = item();

        const auto registered = refused.registerItem();
        const auto unregistered = refused.unregisterItem();

        QVERIFY(!registered);
        QCOMPARE(registered.error().kind, Failure::Kind::refused);
        QVERIFY(!unregistered);
        QCOMPARE(unregistered.error().kind, Failure::Kind::refused);
        QVERIFY(QFileInfo::exists(path()));
    }

private:
    [[nodiscard]] QString autostart() const { return m_folder->filePath(u"autostart"_s); }

    [[nodiscard]] QString path() const { return autostart() + u"/io.orvella.Orvella.desktop"_s; }

    [[nodiscard]] QString program() const { return m_folder->filePath(u"bin/orvella"_s); }

    [[nodiscard]] AutostartLoginItem item(const QString& desktop = {}) const
    {
        QProcessEnvironment environment;
        environment.insert(u"PATH"_s, u"/usr/bin:"_s + m_folder->filePath(u"bin"_s));
        environment.insert(u"XDG_CURRENT_DESKTOP"_s, desktop);
        return AutostartLoginItem({autostart(), {program()}, environment});
    }

    void write(const QString& entry) const
    {
        QVERIFY(QDir().mkpath(autostart()));
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(entry.toUtf8());
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(AutostartLoginItemTest)

#include "AutostartLoginItemTest.moc"
