#include "ui/look/Look.h"

#include "support/FakePlatform.h"
#include "ui/look/Glide.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class LookTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theDesktopsWordCountsBeforeItsColours()
    {
        FakeLook desktop;
        desktop.current = DesktopLook::Scheme::dark;

        QVERIFY(Look(desktop).theme().isDark);
    }

    void withoutAWordTheDesktopsColoursCount_data()
    {
        QTest::addColumn<QColor>("window");
        QTest::addColumn<bool>("isDark");
        QTest::newRow("dark") << QColor(0x2A, 0x2A, 0x2A) << true;
        QTest::newRow("light") << QColor(0xEF, 0xEF, 0xEF) << false;
    }

    void withoutAWordTheDesktopsColoursCount()
    {
        QFETCH(const QColor, window);
        QFETCH(const bool, isDark);
        FakeLook desktop;
        desktop.current = DesktopLook::Scheme::unknown;
        const Look look(desktop);

        auto palette = QGuiApplication::palette();
        palette.setColor(QPalette::Window, window);
        QGuiApplication::setPalette(palette);

        QTRY_COMPARE(look.theme().isDark, isDark);
    }

    void aChangeIsFollowedLive()
    {
        FakeLook desktop;
        const Look look(desktop);
        const QSignalSpy changed(&look, &Look::changed);

        desktop.current = DesktopLook::Scheme::dark;
        desktop.changed();

        QCOMPARE(changed.count(), 1);
        QVERIFY(look.theme().isDark);
    }

    void aListenerOutlivesTheLook()
    {
        FakeLook desktop;
        {
            const Look look(desktop);
        }

        desktop.changed();
    }

    void highContrastComesBeforeTheScheme()
    {
        FakeLook desktop;
        desktop.current = DesktopLook::Scheme::light;
        desktop.highContrast = true;

        QCOMPARE(Look(desktop).theme().surface, QGuiApplication::palette().color(QPalette::Window));
    }

    void textGrowsWithTheDesktopsTextSize()
    {
        FakeLook desktop;
        const Look look(desktop);
        QCOMPARE(look.font(TypeStyle::body).pixelSize(), 13);
        QCOMPARE(look.lineHeight(TypeStyle::body), 16);

        desktop.scale = 1.5;

        QCOMPARE(look.font(TypeStyle::body).pixelSize(), 20);
        QCOMPARE(look.lineHeight(TypeStyle::body), 24);
    }

    void textsAreInTheFontsThatTheDesktopNames()
    {
        FakeLook desktop;
        desktop.family = u"Cantarell"_s;
        desktop.fixedFamily = u"Source Code Pro"_s;

        const Look look(desktop);

        QCOMPARE(look.font(TypeStyle::body).family(), u"Cantarell"_s);
        QCOMPARE(look.font(TypeStyle::balance).family(), u"Source Code Pro"_s);
    }

    void highContrastIsDarkWhereTheDesktopIs()
    {
        FakeLook desktop;
        desktop.highContrast = true;
        desktop.current = DesktopLook::Scheme::dark;

        const Look look(desktop);

        QVERIFY(look.theme().window.lightnessF() < 0.1F);
        QVERIFY(look.theme().text.lightnessF() > 0.9F);
    }

    void moneyIsSetInTheFixedWidthFont()
    {
        FakeLook desktop;

        const auto fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont).families();
        QCOMPARE(Look(desktop).font(TypeStyle::balance).families(), fixed);
        QCOMPARE(Look(desktop).font(TypeStyle::earnings).families(), fixed);
        QCOMPARE(Look(desktop).font(TypeStyle::title2).families(), QGuiApplication::font().families());
    }

    void withoutMotionANumberJumps()
    {
        FakeLook desktop;
        const Look look(desktop);
        QWidget widget;
        widget.show();
        Glide glide(look, &widget, 0);

        glide.glideTo(1);

        QCOMPARE(glide.value(), 1.0);
    }

    void withMotionANumberIsOnItsWayForAMoment()
    {
        FakeLook desktop;
        desktop.motionReduced = false;
        const Look look(desktop);
        QWidget widget;
        widget.show();
        Glide glide(look, &widget, 0);

        glide.glideTo(1);

        QVERIFY(glide.value() < 1);
        QTRY_COMPARE(glide.value(), 1.0);
    }
};

QTEST_MAIN(LookTest)

#include "LookTest.moc"
