#include "platform/linux/look/XSettings.h"

#include "support/XSettingsBytes.h"

#include <QTest>

#include <random>

using namespace orvella;

namespace {

const std::vector<XSettingsBytes::Setting> kSettings {
    {"Net/ThemeName", "Greybird-dark"},
    {"Gtk/EnableAnimations", 0},
    {"Net/Colour", XSettingsBytes::Colour {1, 2, 3, 4}},
    {"", ""},
    {"Xft/DPI", -1},
};

const XSettings kRead {
    {"Net/ThemeName", QByteArray("Greybird-dark")},
    {"Gtk/EnableAnimations", 0},
    {"", QByteArray("")},
    {"Xft/DPI", -1},
};

/// A list that is right but for these bytes.
QByteArray with(qsizetype position, const QByteArray& replacement)
{
    auto bytes = XSettingsBytes::of(kSettings);
    return bytes.replace(position, replacement.size(), replacement);
}

} // namespace

class XSettingsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aListIsReadInEitherByteOrder()
    {
        QCOMPARE(parseXSettings(XSettingsBytes::of(kSettings, XSettingsBytes::Order::littleEndian)), kRead);
        QCOMPARE(parseXSettings(XSettingsBytes::of(kSettings, XSettingsBytes::Order::bigEndian)), kRead);
    }

    void aListMayBeEmptyAndMayEndBeforeItsBytes()
    {
        QCOMPARE(parseXSettings(XSettingsBytes::of({})), XSettings());
        QCOMPARE(parseXSettings(XSettingsBytes::of(kSettings) + "more"), kRead);
    }

    void theLastOfTwoSettingsWithOneNameCounts()
    {
        QCOMPARE(parseXSettings(XSettingsBytes::of({{"a", 1}, {"a", 2}})), (XSettings {{"a", 2}}));
    }

    void theFontsAreThoseOfTheToolkitThatReadsThem()
    {
        const auto wishes = xSettingsWishes(
            {{"Gtk/FontName", QByteArray("Noto Sans 10")}, {"Gtk/MonospaceFontName", QByteArray("Noto Sans Mono 10")}});

        QCOMPARE(wishes.fontFamily, QStringLiteral("Noto Sans"));
        QCOMPARE(wishes.fixedFontFamily, QStringLiteral("Noto Sans Mono"));
        QCOMPARE(xSettingsWishes({{"Gtk/FontName", 10}}).fontFamily, QString());
    }

    void bytesThatAreNoListAreRefused_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("none") << QByteArray();
        QTest::newRow("another byte order") << with(0, "\x02");
        QTest::newRow("the byte order of a letter") << with(0, "l");
        QTest::newRow("more settings than there are") << with(8, QByteArray("\x06\0\0\0", 4));
        QTest::newRow("as many settings as can be") << with(8, "\xFF\xFF\xFF\xFF");
        QTest::newRow("another kind of setting") << with(12, "\x03");
        QTest::newRow("a name that is too long") << with(14, "\xFF\xFF");
        QTest::newRow("a text that is too long") << with(36, "\xFF\xFF\xFF\xFF");
        QTest::newRow("a text whose length is a negative number") << with(36, QByteArray("\0\0\0\x80", 4));
        QTest::newRow("a text that ends with the last of its filling missing")
            << XSettingsBytes::of({{"name", "abc"}}).chopped(1);
    }

    void bytesThatAreNoListAreRefused()
    {
        QFETCH(const QByteArray, bytes);
        QVERIFY(!parseXSettings(bytes));
    }

    void aListThatIsCutAnywhereIsRefused()
    {
        const auto bytes = XSettingsBytes::of(kSettings);
        for (qsizetype length = 0; length < bytes.size(); ++length) {
            // Bytes of its own, so that one too many that is read is noticed.
            const QByteArray cut(bytes.constData(), length);
            QVERIFY2(!parseXSettings(cut), qPrintable(QString::number(length)));
        }
    }

    void noBytesDoAnyHarm()
    {
        std::mt19937 random(1);
        std::uniform_int_distribution<int> byte(0, 255);
        for (int round = 0; round < 20000; ++round) {
            auto bytes = XSettingsBytes::of(kSettings);
            for (int change = 0; change < 4; ++change)
                bytes[std::uniform_int_distribution<qsizetype>(0, bytes.size() - 1)(random)] =
                    static_cast<char>(byte(random));
            bytes.truncate(std::uniform_int_distribution<qsizetype>(0, bytes.size())(random));
            const auto settings = parseXSettings(QByteArray(bytes.constData(), bytes.size()));
            if (settings)
                (void)xSettingsWishes(*settings);
        }
    }

    void theThemeAndTheAnimationsSayHowThingsAreToLook_data()
    {
        using enum DesktopLook::Scheme;
        QTest::addColumn<XSettings>("settings");
        QTest::addColumn<LookWishes>("wishes");

        const auto row = [](const char* name, const XSettings& settings, const LookWishes& wishes) {
            QTest::newRow(name) << settings << wishes;
        };
        row("nothing", {}, {});
        row("a theme", {{"Net/ThemeName", QByteArray("Greybird")}}, {});
        row("a dark theme", {{"Net/ThemeName", QByteArray("Greybird-dark")}}, {.scheme = dark});
        row("a theme of high contrast", {{"Net/ThemeName", QByteArray("HighContrast")}}, {.isHighContrast = true});
        row("a theme that is a number", {{"Net/ThemeName", 1}}, {});
        row("no animations", {{"Gtk/EnableAnimations", 0}}, {.isMotionReduced = true});
        row("no animations, by another name", {{"Net/EnableAnimations", 0}}, {.isMotionReduced = true});
        row("animations", {{"Gtk/EnableAnimations", 1}}, {});
        row("animations that are a text", {{"Gtk/EnableAnimations", QByteArray("0")}}, {});
    }

    void theThemeAndTheAnimationsSayHowThingsAreToLook()
    {
        QFETCH(const XSettings, settings);
        QFETCH(const LookWishes, wishes);
        QCOMPARE(xSettingsWishes(settings), wishes);
    }
};

QTEST_GUILESS_MAIN(XSettingsTest)

#include "XSettingsTest.moc"
