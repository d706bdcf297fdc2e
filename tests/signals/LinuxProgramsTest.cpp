#include "signals/AppSignalClassifier.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

QStringList list(const char* text)
{
    return QString::fromLatin1(text).split(u", "_s, Qt::SkipEmptyParts);
}

QStringList categoriesOf(const QString& identifier, const QString& name)
{
    const std::vector<RunningApplication> running {{true, identifier, name}};
    return AppSignalClassifier::categories(running).keys;
}

} // namespace

/// What common programs of Linux are taken for, by the desktop entries and window classes of their packages in Debian
/// 12 (D) and on Flathub (F), in English. The rules were not written for them, and it shows.
class LinuxProgramsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void commonProgramsHaveTheseCategories_data()
    {
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("windowClass");
        QTest::addColumn<QStringList>("ofEntry");
        QTest::addColumn<QStringList>("ofWindowClass");

        const auto row = [](const char* identifier, const char* name, const char* windowClass, const char* ofEntry,
                             const char* ofWindowClass) {
            QTest::newRow(identifier) << QString::fromLatin1(identifier) << QString::fromLatin1(name)
                                      << QString::fromLatin1(windowClass) << list(ofEntry) << list(ofWindowClass);
        };
        // Browsers and mail.
        row("firefox-esr", "Firefox ESR", "firefox-esr", "", ""); // D
        row("org.mozilla.firefox", "Firefox", "firefox", "", ""); // F
        row("chromium", "Chromium Web Browser", "Chromium", "", ""); // D
        row("thunderbird", "Thunderbird", "thunderbird-default", "", ""); // D
        row("org.gnome.Evolution", "Evolution", "evolution", "", ""); // D
        row("org.kde.kmail2", "KMail", "kmail", "communication", "communication"); // D
        // Terminals, editors and other tools of developers.
        row("org.gnome.Terminal", "Terminal", "Gnome-terminal", "developer_tools", "developer_tools"); // D
        row("org.kde.konsole", "Konsole", "konsole", "", ""); // D
        row("code", "Visual Studio Code", "Code", "", ""); // the maker's package
        row("com.visualstudio.code", "Visual Studio Code", "code", "", ""); // F
        row("org.kde.kate", "Kate", "kate", "", ""); // D
        row("org.gnome.TextEditor", "Text Editor", "gnome-text-editor", "", ""); // D
        row("io.dbeaver.DBeaverCommunity", "DBeaver Community", "DBeaver", "", ""); // F
        row("com.getpostman.Postman", "Postman", "Postman", "developer_tools", "developer_tools"); // F
        row("com.github.tchx84.Flatseal", "Flatseal", "com.github.tchx84.Flatseal", "developer_tools",
            "developer_tools"); // F
        // Pictures, sound and film.
        row("gimp", "GNU Image Manipulation Program", "Gimp-2.10", "", ""); // D
        row("org.gimp.GIMP", "GNU Image Manipulation Program", "Gimp-2.10", "", ""); // F
        row("org.inkscape.Inkscape", "Inkscape", "org.inkscape.Inkscape", "", ""); // D
        row("blender", "Blender", "Blender", "design_tools", "design_tools"); // D
        row("org.darktable.darktable", "Darktable", "darktable", "", ""); // D
        row("org.kde.kdenlive", "Kdenlive", "kdenlive", "", ""); // D
        row("com.obsproject.Studio", "OBS Studio", "obs", "media_creation", "media_creation"); // D
        row("audacity", "Audacity", "Audacity", "", ""); // D
        row("vlc", "VLC media player", "vlc", "", ""); // D
        row("com.spotify.Client", "Spotify", "Spotify", "", ""); // F
        // The office.
        row("libreoffice-writer", "LibreOffice Writer", "libreoffice-writer", "", ""); // D
        row("org.libreoffice.LibreOffice.writer", "LibreOffice Writer", "libreoffice-writer", "", ""); // F
        row("libreoffice-calc", "LibreOffice Calc", "libreoffice-calc", "", ""); // D
        row("org.gnome.Calendar", "Calendar", "gnome-calendar", "productivity", "productivity"); // D
        row("org.gnome.Evince", "Document Viewer", "evince", "", ""); // D
        row("org.kde.okular", "Okular", "okular", "", ""); // D
        row("md.obsidian.Obsidian", "Obsidian", "obsidian", "media_creation, productivity",
            "media_creation, productivity"); // F
        row("org.zotero.Zotero", "Zotero", "Zotero", "education_research", "education_research"); // F
        // Talking to each other.
        row("org.telegram.desktop", "Telegram Desktop", "TelegramDesktop", "communication", "communication"); // D
        row("com.slack.Slack", "Slack", "Slack", "communication", "communication"); // F
        row("com.discordapp.Discord", "Discord", "discord", "communication", "communication"); // F
        row("us.zoom.Zoom", "Zoom", "zoom", "communication", "communication"); // F
        row("org.signal.Signal", "Signal", "signal", "", ""); // F
        row("com.github.IsmaelMartinez.teams_for_linux", "Teams for Linux", "teams-for-linux",
            "communication, developer_tools", "communication"); // F
        // Everything else.
        row("org.keepassxc.KeePassXC", "KeePassXC", "keepassxc", "", ""); // D
        row("com.bitwarden.desktop", "Bitwarden", "Bitwarden", "security_privacy", "security_privacy"); // F
        row("org.gnome.Nautilus", "Files", "org.gnome.Nautilus", "", ""); // D
        row("transmission-gtk", "Transmission", "transmission-gtk", "", ""); // D
        row("com.valvesoftware.Steam", "Steam", "steam", "", ""); // F
    }

    void commonProgramsHaveTheseCategories()
    {
        QFETCH(const QString, identifier);
        QFETCH(const QString, name);
        QFETCH(const QString, windowClass);
        QFETCH(const QStringList, ofEntry);
        QFETCH(const QStringList, ofWindowClass);

        QCOMPARE(categoriesOf(identifier, name), ofEntry);
        // What is left where nobody knows the entry of a window.
        QCOMPARE(categoriesOf(windowClass, windowClass), ofWindowClass);
    }

    void theSameProgramIsAnotherInAnotherLanguage()
    {
        QCOMPARE(categoriesOf(u"org.gnome.Calendar"_s, u"Kalender"_s), QStringList {u"productivity"_s});
        QCOMPARE(categoriesOf(u"org.kde.korganizer"_s, u"Calendar"_s), QStringList {u"productivity"_s});
        QCOMPARE(categoriesOf(u"org.kde.korganizer"_s, u"Kalender"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(LinuxProgramsTest)

#include "LinuxProgramsTest.moc"
