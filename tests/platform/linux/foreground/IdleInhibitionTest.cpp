#include "platform/linux/foreground/IdleInhibition.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// Names and reasons that programs give, written down.
class IdleInhibitionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatPeopleLookAtIsForViewing_data()
    {
        columns();
        row("a browser's video", "firefox", "video-playing");
        row("a browser's video on another desktop", "/usr/lib/chromium/chromium", "Video Wake Lock");
        row("a shared screen", "/usr/lib/chromium/chromium", "Capturing");
        row("a visible window, by GNOME's compositor", "mutter", "idle-inhibit");
        row("a player", "org.gnome.Totem", "Playing a movie");
        row("a player in another language", "org.gnome.Totem", "Ein Film wird abgespielt");
        row("a player that says little", "vlc", "Playing some media.");
        row("a game", "My SDL application", "Playing a game");
        row("a presentation", "org.libreoffice.LibreOffice", "Presenting");
        row("a music video", "org.gnome.Totem", "Playing a music video");
        row("a document viewer", "org.gnome.Evince", "Running in presentation mode");
        row("no reason", "org.videolan.VLC", "");
        row("a reason that is none", "mpv", "unknown");
        row("no name", "", "Playing video");
        row("a name that only begins like another", "mpdplayer", "x");
    }

    void whatPeopleLookAtIsForViewing()
    {
        QFETCH(const IdleInhibition, inhibition);

        QVERIFY(inhibition.isForViewing());
    }

    void whatNobodyLooksAtIsNot_data()
    {
        columns();
        row("a browser's sound", "firefox", "audio-playing");
        row("a browser's sound, in another's words", "/usr/lib/chromium/chromium", "Playing audio");
        row("a browser's connections", "google-chrome", "WebRTC has active PeerConnections");
        row("a player of music", "org.kde.elisa", "Playing Music");
        row("a player of music by its name", "com.spotify.Client", "Playback");
        row("music in German", "x", "Musik wird wiedergegeben");
        row("music in Spanish", "x", "Reproduciendo m\xfasica");
        row("music in French, in capitals", "x", "LECTURE DE MUSIQUE");
        row("GNOME's switch", "caffeine-gnome-extension", "Inhibit by Caffeine");
        row("a switch with another name", "x", "Caffeine is active");
        row("Plasma's switch", "plasmashell", "Die Akku-Anzeige");
        row("Plasma's switch by its reason", "Power Management",
            "The battery applet has enabled suppressing sleep and screen locking");
        row("a download", "firefox", "Downloading a file");
        row("a download by its program", "org.qbittorrent.qBittorrent", "x");
        row("a copy", "org.gnome.Nautilus", "Copying Files");
        row("an update", "org.gnome.Software", "Installing updates");
        row("the program itself", "io.orvella.Orvella", "Showing");
        row("the program by its other name", "Orvella", "");
        row("neither name nor reason", "", "");
        row("blanks", "  ", "\t");
        row("a tool that was told nothing", "unknown", "not specified");
        row("another tool that was told nothing", "", "Unknown reason");
    }

    void whatNobodyLooksAtIsNot()
    {
        QFETCH(const IdleInhibition, inhibition);

        QVERIFY(!inhibition.isForViewing());
    }

    void aLongTextIsJudgedByItsBeginning()
    {
        const QString filler(1'000'000, u'x');

        QVERIFY(!(IdleInhibition {u"x"_s, u"audio "_s + filler}.isForViewing()));
        QVERIFY((IdleInhibition {u"x"_s, filler + u" audio"_s}.isForViewing()));
    }

private:
    static void columns() { QTest::addColumn<IdleInhibition>("inhibition"); }

    static void row(const char* name, const char* who, const char* why)
    {
        QTest::newRow(name) << IdleInhibition {QString::fromLatin1(who), QString::fromLatin1(why)};
    }
};

QTEST_GUILESS_MAIN(IdleInhibitionTest)

#include "IdleInhibitionTest.moc"
