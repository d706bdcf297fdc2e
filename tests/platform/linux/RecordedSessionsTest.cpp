#include "platform/linux/applications/LinuxRunningApplications.h"

#include "support/ControlGroupTree.h"

#include <QTemporaryDir>
#include <QTest>

#include <optional>
#include <vector>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

struct Entry {
    QString id;
    QString name;
    QByteArray more = {};
};

const QByteArray kHidden = "NoDisplay=true\n";

QStringList texts(const std::vector<const char*>& latin)
{
    QStringList texts;
    for (const auto* const text : latin)
        texts.append(QString::fromLatin1(text));
    return texts;
}

} // namespace

/// The names of units and entries are those of real sessions, written down: nothing of such a session runs here.
class RecordedSessionsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_tree.emplace();
        m_applications.emplace();
    }

    void ofPlasmaTheApplicationsAreListed()
    {
        install({{u"firefox"_s, u"Firefox"_s}, {u"org.kde.dolphin"_s, u"Dolphin"_s}, {u"org.kde.kate"_s, u"Kate"_s},
            {u"org.kde.konsole"_s, u"Konsole"_s}, {u"org.kde.kwin"_s, u"KWin"_s, kHidden},
            {u"org.kde.plasmashell"_s, u"Plasma Workspace"_s, kHidden}, {u"org.kde.krunner"_s, u"KRunner"_s, kHidden},
            {u"org.kde.kdeconnect.daemon"_s, u"KDE Connect"_s, kHidden}, {u"org.kde.discover"_s, u"Discover"_s},
            {u"org.kde.discover.notifier"_s, u"Discover"_s, kHidden},
            {u"org.kde.kalendarac"_s, u"Calendar Reminders"_s, kHidden}, {u"org.telegram.desktop"_s, u"Telegram"_s},
            {u"htop"_s, u"Htop"_s, "Terminal=true\n"}, {u"org.kde.latte-dock"_s, u"Latte Dock"_s},
            {u"google-chrome"_s, u"Google Chrome"_s}});
        addUnits("session.slice/",
            {"plasma-kwin_wayland.service", "plasma-plasmashell.service", "plasma-xdg-desktop-portal-kde.service",
                "plasma-kded.service", "plasma-ksmserver.service", "xdg-desktop-portal.service", "pipewire.service",
                "wireplumber.service", "at-spi-dbus-bus.service"});
        addUnits("background.slice/",
            {"plasma-kactivitymanagerd.service", "plasma-kglobalaccel.service", "kde-baloo.service",
                "plasma-baloorunner.service"});
        addUnits("app.slice/",
            {"app-org.kde.konsole-de12e69356754c5dae23bdfdc108d53a.scope",
                "app-org.kde.konsole-de12e69356754c5dae23bdfdc108d53a.scope/tab(44021).scope",
                "app-org.kde.dolphin@765eead4667549d0ab239e9e204534a3.service", "app-org.kde.dolphin-81510.scope",
                "app-org.kde.dolphin-81510.scope/main.scope", "app-firefox-463f15a98c444438a245e897e0a801d8.scope",
                R"(app-google\x2dchrome-fa92ae1ce8f54f4298975211065460e7.scope)",
                "app-htop@0d2c1b6a5e4f48c8a1e1f0f7b3a2c4d5.service",
                R"(app-org.kde.latte\x2ddock@1b2c3d4e5f60718293a4b5c6d7e8f901.service)",
                "app-org.kde.kdeconnect.daemon@autostart.service", "app-org.kde.discover.notifier@autostart.service",
                "app-org.kde.kalendarac@autostart.service", R"(app-geoclue\x2ddemo\x2dagent@autostart.service)",
                "app-org.telegram.desktop@autostart.service", "app-org.kde.krunner@5f6e7d8c9b0a.service",
                R"(app-\x2fusr\x2flib\x2fx86_64\x2dlinux\x2dgnu\x2flibexec\x2fDiscoverNotifier-72a3c7b93c09.scope)",
                "xdg-desktop-portal-gtk.service", "dbus.service", "obex.service", "xdg-document-portal.service"});
        m_tree->add(u"app.slice/app-org.kde.kate@9d8c7b6a.service"_s, false);

        QCOMPARE(listed(),
            QStringList({u"firefox|Firefox"_s, u"google-chrome|Google Chrome"_s, u"org.kde.dolphin|Dolphin"_s,
                u"org.kde.konsole|Konsole"_s}));
    }

    void ofGnomeTheApplicationsAreListed()
    {
        install({{u"org.gnome.Terminal"_s, u"Terminal"_s}, {u"org.gnome.Nautilus"_s, u"Files"_s},
            {u"firefox-esr"_s, u"Firefox ESR"_s}, {u"org.mozilla.firefox"_s, u"Firefox"_s},
            {u"org.gnome.TextEditor"_s, u"Text Editor"_s}, {u"org.gnome.Shell"_s, u"GNOME Shell"_s, kHidden},
            {u"org.gnome.Evolution-alarm-notify"_s, u"Evolution Alarm Notify"_s, kHidden},
            {u"org.gnome.Software"_s, u"Software"_s}, {u"gnome-software-service"_s, u"Software"_s, kHidden},
            {u"code_code"_s, u"Visual Studio Code"_s}, {u"io.orvella.Orvella"_s, u"Orvella"_s},
            {u"org.gnome.Zenity"_s, u"Zenity"_s, kHidden}, {u"xdg-desktop-portal-gnome"_s, u"Portal"_s, kHidden}});
        addUnits("session.slice/",
            {"org.gnome.Shell@wayland.service", "org.gnome.SettingsDaemon.Power.service",
                "org.gnome.SettingsDaemon.MediaKeys.service", "org.gnome.SettingsDaemon.Color.service",
                "org.gnome.SettingsDaemon.ScreensaverProxy.service", "org.gnome.SettingsDaemon.XSettings.service",
                "org.freedesktop.IBus.session.GNOME.service", "xdg-desktop-portal-gnome.service",
                "xdg-permission-store.service", "pipewire-pulse.service", "gvfs-daemon.service"});
        addUnits("app.slice/",
            {"app-org.gnome.Terminal.slice/gnome-terminal-server.service",
                "app-org.gnome.Terminal.slice/vte-spawn-3b1f0c9e-77aa-4f0c-8a4b-1a2b3c4d5e6f.scope",
                "app-org.gnome.Terminal.slice/vte-spawn-91d2c3b4-0a1b-4c2d-9e3f-5a6b7c8d9e0f.scope",
                R"(app-dbus\x2d:1.2\x2dorg.gnome.Nautilus.slice/dbus-:1.2-org.gnome.Nautilus@0.service)",
                R"(app-dbus\x2d:1.2\x2dorg.gnome.Identity.slice/dbus-:1.2-org.gnome.Identity@0.service)",
                R"(app-dbus\x2d:1.2\x2dorg.gnome.OnlineAccounts.slice/dbus-:1.2-org.gnome.OnlineAccounts@0.service)",
                R"(app-gnome\x2dsession\x2dmanager.slice/gnome-session-manager@gnome.service)",
                R"(app-gnome-firefox\x2desr-4120.scope)", R"(app-gnome-firefox\x2desr-4388.scope)",
                "app-flatpak-org.mozilla.firefox-5120.scope", "app-gnome-org.mozilla.firefox-5098.scope",
                "snap.code.code-0bb6bd33-6a5f-4a7f-9b2e-4d1e9d2cd0a1.scope", "app-gnome-io.orvella.Orvella-77.scope",
                R"(app-gnome-org.gnome.Evolution\x2dalarm\x2dnotify-2210.scope)",
                R"(app-gnome-gnome\x2dsoftware\x2dservice-2215.scope)",
                R"(app-gnome-gnome\x2dkeyring\x2dsecrets-2001.scope)", "app-gnome-org.gnome.Zenity-6001.scope",
                "gcr-ssh-agent.service", "evolution-source-registry.service", "tracker-miner-fs-3.service",
                "dbus.service"});
        m_tree->add(u"app.slice/app-gnome-org.gnome.TextEditor-7000.scope"_s, false);

        QCOMPARE(listed(),
            QStringList({u"code_code|Visual Studio Code"_s, u"firefox-esr|Firefox ESR"_s, u"org.gnome.Nautilus|Files"_s,
                u"org.gnome.Terminal|Terminal"_s, u"org.mozilla.firefox|Firefox"_s}));
    }

    void aProgramThatMenusDoNotShowIsNoApplication_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<bool>("isListed");
        QTest::newRow("an application") << u"Type=Application\nNoDisplay=false\nHidden=false\nTerminal=false\n"_s
                                        << true;
        QTest::newRow("not shown") << u"Type=Application\nNoDisplay=true\n"_s << false;
        QTest::newRow("removed") << u"Type=Application\nHidden=true\n"_s << false;
        QTest::newRow("in a terminal") << u"Type=Application\nTerminal=true\n"_s << false;
        QTest::newRow("a link") << u"Type=Link\n"_s << false;
        QTest::newRow("of no type") << u""_s << false;
    }

    void aProgramThatMenusDoNotShowIsNoApplication()
    {
        QFETCH(const QString, entry);
        QFETCH(const bool, isListed);
        ControlGroupTree::write(m_applications->filePath(u"org.example.Paint.desktop"_s),
            "[Desktop Entry]\nName=Paint\n" + entry.toLatin1());
        m_tree->add(u"app.slice/app-org.example.Paint-1.scope"_s);

        QCOMPARE(listed(), isListed ? QStringList {u"org.example.Paint|Paint"_s} : QStringList());
    }

    void anApplicationThatIsNotInstalledIsNotListed()
    {
        m_tree->add(u"app.slice/app-org.example.Paint-1.scope"_s);

        QCOMPARE(listed(), QStringList());
    }

    void theNameIsInTheViewersLanguage()
    {
        install({{u"org.kde.kate"_s, u"Kate"_s, "Name[de]=K\xc3\xa4te\n"}});
        m_tree->add(u"app.slice/app-org.kde.kate-1.scope"_s);

        QCOMPARE(listed(u"de_AT.UTF-8"_s), QStringList {u"org.kde.kate|K\u00e4te"_s});
    }

private:
    void install(const std::vector<Entry>& entries) const
    {
        for (const auto& [id, name, more] : entries)
            ControlGroupTree::write(m_applications->filePath(id + u".desktop"_s),
                "[Desktop Entry]\nType=Application\nName=" + name.toUtf8() + '\n' + more);
    }

    void addUnits(const char* slice, const std::vector<const char*>& names) const
    {
        for (const auto& name : texts(names))
            m_tree->add(QString::fromLatin1(slice) + name);
    }

    [[nodiscard]] QStringList listed(const QString& language = u"C"_s) const
    {
        QProcessEnvironment environment;
        environment.insert(u"XDG_SESSION_TYPE"_s, u"wayland"_s);
        environment.insert(u"LANG"_s, language);
        const LinuxRunningApplications applications(
            environment, {m_applications->path()}, ApplicationUnits(m_tree->processes(), m_tree->groups()));
        QStringList texts;
        for (const auto& application : applications.list())
            texts.append(application.identifier.value_or(u"-"_s) + u'|' + application.name.value_or(u"-"_s)
                + (application.isRegular ? QString() : u"|not regular"_s));
        return texts;
    }

    std::optional<ControlGroupTree> m_tree;
    std::optional<QTemporaryDir> m_applications;
};

QTEST_GUILESS_MAIN(RecordedSessionsTest)

#include "RecordedSessionsTest.moc"
