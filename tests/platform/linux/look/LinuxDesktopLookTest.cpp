#include "platform/linux/look/LinuxDesktopLook.h"

#include "support/FakeSettingsPortal.h"

#include <QGuiApplication>
#include <QPalette>
#include <QProcess>
#include <QTest>

#include <cstdio>
#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

using Scheme = DesktopLook::Scheme;

const auto kAppearance = u"org.freedesktop.appearance"_s;
const auto kInterface = u"org.gnome.desktop.interface"_s;
const auto kPrintScale = u"--print-scale"_s;

void setWindowColour(const QColor& colour)
{
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Window, colour);
    QGuiApplication::setPalette(palette);
}

QDBusConnection nowhere()
{
    return QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);
}

} // namespace

class LinuxDesktopLookTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QGuiApplication::setPalette(QPalette());
        m_portal = std::make_unique<FakeSettingsPortal>();
        m_look = std::make_unique<LinuxDesktopLook>(QDBusConnection::sessionBus());
        m_look->watch([this] { ++m_changes; });
        m_changes = 0;
    }

    void cleanup()
    {
        m_look.reset();
        m_portal.reset();
    }

    void whereTheDesktopSaysNothingEverythingIsAsUsual()
    {
        QCOMPARE(m_look->scheme(), Scheme::light);
        QVERIFY(!m_look->isHighContrast());
        QVERIFY(!m_look->isMotionReduced());
        QCOMPARE(m_look->textScale(), 1.0);
    }

    void thePaletteDecidesWhereNobodySaysAnything()
    {
        setWindowColour(QColor(0x2A, 0x2E, 0x32));
        QTRY_COMPARE(m_look->scheme(), Scheme::dark);
        QCOMPARE(m_changes, 1);

        setWindowColour(Qt::black);
        QTest::qWait(50);
        QCOMPARE(m_changes, 1);

        setWindowColour(Qt::white);
        QTRY_COMPARE(m_look->scheme(), Scheme::light);
        QCOMPARE(m_changes, 2);
    }

    void thePaletteIsReadAtTheStart()
    {
        setWindowColour(QColor(0x7F, 0x7F, 0x7F));
        QCOMPARE(LinuxDesktopLook(nowhere()).scheme(), Scheme::dark);

        setWindowColour(QColor(0x81, 0x81, 0x81));
        QCOMPARE(LinuxDesktopLook(nowhere()).scheme(), Scheme::light);
    }

    void thePortalHasTheFirstWord()
    {
        setWindowColour(Qt::black);
        QTRY_COMPARE(m_look->scheme(), Scheme::dark);

        m_portal->put(kAppearance, u"color-scheme"_s, 2U);
        m_portal->start();
        QTRY_COMPARE(m_look->scheme(), Scheme::light);

        m_portal->change(kAppearance, u"color-scheme"_s, 0U);
        QTRY_COMPARE(m_look->scheme(), Scheme::dark);
    }

    void theListenerIsCalledOnceForAllThatChangesTogether()
    {
        m_portal->put(kAppearance, u"color-scheme"_s, 1U);
        m_portal->put(kAppearance, u"contrast"_s, 1U);
        m_portal->put(kInterface, u"enable-animations"_s, false);

        m_portal->start();

        QTRY_COMPARE(m_changes, 1);
        QCOMPARE(m_look->scheme(), Scheme::dark);
        QVERIFY(m_look->isHighContrast());
        QVERIFY(m_look->isMotionReduced());
        QTest::qWait(100);
        QCOMPARE(m_changes, 1);
    }

    void aWishThatChangesNoAnswerIsNoChange()
    {
        m_portal->start();
        QTRY_COMPARE(m_portal->questions(), 1);

        m_portal->change(kAppearance, u"color-scheme"_s, 2U);
        m_portal->change(kInterface, u"text-scaling-factor"_s, 1.5);
        QTest::qWait(100);

        QCOMPARE(m_changes, 0);
        QCOMPARE(m_look->textScale(), 1.0);
    }

    void theListenerMayReplaceItselfInsideItsCall()
    {
        m_look->watch([this] { m_look->watch([this] { ++m_changes; }); });

        setWindowColour(Qt::black);
        setWindowColour(Qt::white);

        QTRY_COMPARE(m_changes, 1);
    }

    void textIsAsLargeAsTheFontsOfTheScreen_data()
    {
        QTest::addColumn<QString>("dotsPerInch");
        QTest::addColumn<QString>("scalesWindows");
        QTest::addColumn<QByteArray>("scale");
        QTest::newRow("usual") << u"96"_s << u"0"_s << QByteArray("1.00\n");
        QTest::newRow("larger") << u"144"_s << u"0"_s << QByteArray("1.50\n");
        QTest::newRow("smaller is not followed") << u"48"_s << u"0"_s << QByteArray("1.00\n");
        QTest::newRow("three times") << u"288"_s << u"0"_s << QByteArray("3.00\n");
        QTest::newRow("more is not followed") << u"960"_s << u"0"_s << QByteArray("3.00\n");
        QTest::newRow("larger with the whole window") << u"144"_s << u"1"_s << QByteArray("1.00\n");
    }

    void textIsAsLargeAsTheFontsOfTheScreen()
    {
        QFETCH(const QString, dotsPerInch);
        QFETCH(const QString, scalesWindows);
        QProcess child;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_FONT_DPI"_s, dotsPerInch);
        environment.insert(u"QT_ENABLE_HIGHDPI_SCALING"_s, scalesWindows);
        child.setProcessEnvironment(environment);

        child.start(QCoreApplication::applicationFilePath(), {kPrintScale});

        QVERIFY(child.waitForFinished());
        QTEST(child.readAllStandardOutput(), "scale");
    }

private:
    std::unique_ptr<FakeSettingsPortal> m_portal;
    std::unique_ptr<LinuxDesktopLook> m_look;
    int m_changes = 0;
};

int main(int argumentCount, char** arguments)
{
    QGuiApplication application(argumentCount, arguments);
    if (QCoreApplication::arguments().value(1) == kPrintScale) {
        std::printf("%.2f\n", LinuxDesktopLook(nowhere()).textScale());
        return 0;
    }
    LinuxDesktopLookTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "LinuxDesktopLookTest.moc"
