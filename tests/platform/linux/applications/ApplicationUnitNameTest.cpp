#include "platform/linux/applications/ApplicationUnitName.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// The names are those that launchers give, written down.
class ApplicationUnitNameTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLikeliestIdIsFirst_data()
    {
        QTest::addColumn<QString>("unit");
        QTest::addColumn<QString>("id");

        const auto row = [](const char* name, const char* unit, const char* id) {
            QTest::newRow(name) << QString::fromLatin1(unit) << QString::fromLatin1(id);
        };
        row("GNOME's shell", "app-gnome-org.gnome.Evince-12345.scope", "org.gnome.Evince");
        row("an escaped dash", R"(app-gnome-firefox\x2desr-4120.scope)", "firefox-esr");
        row("Flatpak", "app-flatpak-org.telegram.desktop-12345.scope", "org.telegram.desktop");
        row("KDE, a scope", "app-org.kde.konsole-de12e69356754c5dae23bdfdc108d53a.scope", "org.kde.konsole");
        row("KDE, a service", "app-org.kde.dolphin@765eead4667549d0ab239e9e204534a3.service", "org.kde.dolphin");
        row("KDE, without a domain", "app-firefox-463f15a98c444438a245e897e0a801d8.scope", "firefox");
        row("a launcher and a service", "app-KDE-org.kde.okular@12345.service", "org.kde.okular");
        row("a service that runs once", "app-org.kde.amarok.service", "org.kde.amarok");
        row("a slice", "app-org.gnome.Terminal.slice", "org.gnome.Terminal");
        row("dbus-broker", "dbus-:1.2-org.gnome.Nautilus@0.service", "org.gnome.Nautilus");
        row("dbus-broker, escaped", R"(dbus-:1.15-org.example.My\x2dPaint@12.service)", "org.example.My-Paint");
        row("a snap", "snap.firefox.firefox-3dcfaa86-bf58-4d3e-a7c6-4e34dfdb050f.scope", "firefox_firefox");
        row("an older snap", "snap.code.url-handler.7ff805ad-0523-4c96-ae6e-d6e168e1e41b.scope", "code_url-handler");
        row("a program without an entry", R"(app-\x2fusr\x2fbin\x2fkorgac-9e6550aaf81c4723a7afd6ba45888d14.scope)",
            "/usr/bin/korgac");
        row("bytes of UTF-8", R"(app-caf\xc3\xa9-1.scope)", "caf\xe9");
        row("what is no escape", R"(app-a\xzz\x2-1.scope)", R"(a\xzz\x2)");
    }

    void theLikeliestIdIsFirst()
    {
        QFETCH(const QString, unit);
        QFETCH(const QString, id);

        const auto ids = possibleApplicationIds(unit);

        QVERIFY(!ids.isEmpty());
        QCOMPARE(ids.first(), id);
    }

    void aNameWithDashesIsReadInMoreThanOneWay()
    {
        QCOMPARE(possibleApplicationIds(u"app-gnome-disk-utility-812.scope"_s),
            QStringList({u"utility"_s, u"gnome-disk-utility"_s, u"disk-utility"_s}));
        QCOMPARE(possibleApplicationIds(u"app-gnome-org.gnome.Evince-12345.service"_s),
            QStringList({u"12345"_s, u"gnome-org.gnome.Evince-12345"_s, u"org.gnome.Evince-12345"_s,
                u"org.gnome.Evince"_s, u"gnome-org.gnome.Evince"_s}));
    }

    void otherUnitsAreNoApplications_data()
    {
        QTest::addColumn<QString>("unit");
        for (const auto* const name : {"", "app", "app-", "app-.scope", "app.slice", "app-x.scope", "app-x-1.timer",
                 "dbus.service", "dbus-broker.service", "dbus-:1.2.service", "pipewire.service", "init.scope",
                 "xdg-desktop-portal.service", "vte-spawn-3b1f0c9e-77aa-4f0c-8a4b-1a2b3c4d5e6f.scope",
                 "org.gnome.SettingsDaemon.Power.service", "plasma-plasmashell.service", "snap.lxd.daemon.service",
                 "snap.firefox.scope", "run-u12.scope", "app-org.kde.kdeconnect.daemon@autostart.service",
                 R"(app-geoclue\x2ddemo\x2dagent@autostart.service)"})
            QTest::newRow(name) << QString::fromLatin1(name);
    }

    void otherUnitsAreNoApplications()
    {
        QFETCH(const QString, unit);

        QCOMPARE(possibleApplicationIds(unit), QStringList());
    }
};

QTEST_GUILESS_MAIN(ApplicationUnitNameTest)

#include "ApplicationUnitNameTest.moc"
