#include "platform/DisplayChoice.h"

#include <QTest>

using namespace orvella;

/// What the toolkit sees while it starts. What it makes of that, the end-to-end tests see.
class DisplayChoiceTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        qunsetenv("QT_QPA_PLATFORM");
        qunsetenv("XDG_CURRENT_DESKTOP");
    }

    void aDesktopThatBringsGtkIsHiddenWhileTheToolkitStarts_data()
    {
        QTest::addColumn<QByteArray>("desktop");
        QTest::newRow("XFCE") << QByteArray("XFCE");
        QTest::newRow("GNOME with a session of its own") << QByteArray("ubuntu:GNOME");
        QTest::newRow("one that nobody knows") << QByteArray("Elsewhere");
    }

    void aDesktopThatBringsGtkIsHiddenWhileTheToolkitStarts()
    {
        QFETCH(const QByteArray, desktop);
        qputenv("XDG_CURRENT_DESKTOP", desktop);
        {
            const DisplayChoice display;
            QVERIFY(!qEnvironmentVariableIsSet("XDG_CURRENT_DESKTOP"));
        }

        QCOMPARE(qgetenv("XDG_CURRENT_DESKTOP"), desktop);
    }

    void plasmaIsNotHidden()
    {
        qputenv("XDG_CURRENT_DESKTOP", "KDE");

        const DisplayChoice display;

        QCOMPARE(qgetenv("XDG_CURRENT_DESKTOP"), QByteArray("KDE"));
    }

    void whereThereIsNoDesktopNoneIsMade()
    {
        {
            const DisplayChoice display;
        }

        QVERIFY(!qEnvironmentVariableIsSet("XDG_CURRENT_DESKTOP"));
        QVERIFY(!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"));
    }

    void theViewersOwnDisplayIsThereAgain()
    {
        qputenv("QT_QPA_PLATFORM", "wayland");
        {
            const DisplayChoice display;
            QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("wayland;offscreen"));
        }

        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("wayland"));
    }
};

QTEST_APPLESS_MAIN(DisplayChoiceTest)

#include "DisplayChoiceTest.moc"
