#include "platform/linux/StatusNotifierItem.h"
#include "support/VirtualDesktop.h"

#include <QGuiApplication>
#include <QPalette>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const StatusAppearance kBalance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $1.25 available"_s};
const StatusAppearance kAdReady {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s};

/// In pixels, with a little of what is below it.
constexpr int kPanelHeight = 40;

} // namespace

/// The status item in a real panel, clicked by a real pointer.
class StatusItemOnPanelTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The panel of this desktop is light; without a settings service no palette says so.
        QPalette palette = QGuiApplication::palette();
        palette.setColor(QPalette::Window, Qt::white);
        QGuiApplication::setPalette(palette);
        m_item = std::make_unique<StatusNotifierItem>(QDBusConnection::sessionBus(), u"org.example.orvella"_s);
        m_item->show([this] { ++m_clicks; });
    }

    void init()
    {
        m_item->setAppearance(kAdReady);
        QTRY_VERIFY_WITH_TIMEOUT(place(m_green), 10000);
        m_clicks = 0;
    }

    void cleanupTestCase() { m_item.reset(); }

    void thePanelShowsTheIconUnscaled()
    {
        const auto word = place(m_green);

        QVERIFY(word);
        QVERIFY(word->bottom() < QGuiApplication::primaryScreen()->availableGeometry().top());
        QCOMPARE(word->size(), QSize(22, 18));
    }

    void theIconChangesWithTheAppearance()
    {
        m_item->setAppearance(kBalance);

        QTRY_VERIFY_WITH_TIMEOUT(!place(m_green) && place(m_label), 10000);
    }

    void aClickIsHeardWithItsPosition()
    {
        const auto centre = place(m_green).value_or(QRect()).center();

        QVERIFY(VirtualDesktop::click(centre));

        QTRY_COMPARE(m_clicks, 1);
        QCOMPARE(m_item->lastClick(), centre);
    }

    void aClickWithAnotherButtonDoesNothingAndTheNextOneIsHeard()
    {
        const auto centre = place(m_green).value_or(QRect()).center();

        QVERIFY(VirtualDesktop::click(centre, 3));
        QVERIFY(VirtualDesktop::click(centre, 2));
        QTest::qWait(200);
        QCOMPARE(m_clicks, 0);

        QVERIFY(VirtualDesktop::click(centre));
        QTRY_COMPARE(m_clicks, 1);
    }

    void aRestartedPanelShowsTheOneIconAgain()
    {
        QVERIFY(VirtualDesktop::run(u"xfce4-panel"_s, {u"--restart"_s}));

        QTRY_VERIFY_WITH_TIMEOUT(!place(m_green), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(place(m_green), 10000);
        QTest::qWait(500);
        QCOMPARE(place(m_green).value_or(QRect()).size(), QSize(22, 18));
        QVERIFY(VirtualDesktop::click(place(m_green).value_or(QRect()).center()));
        QTRY_COMPARE(m_clicks, 1);
    }

private:
    /// Where the panel shows a colour.
    static std::optional<QRect> place(const QColor& colour)
    {
        const auto* screen = QGuiApplication::primaryScreen();
        const QRect panel(QPoint(), QSize(screen->size().width(), kPanelHeight));
        return VirtualDesktop::find(VirtualDesktop::screenshot(panel), colour);
    }

    const QColor m_green = statusColour(StatusAppearance::Tone::green, PanelTone::light);
    const QColor m_label = statusColour(StatusAppearance::Tone::label, PanelTone::light);
    std::unique_ptr<StatusNotifierItem> m_item;
    int m_clicks = 0;
};

QTEST_MAIN(StatusItemOnPanelTest)

#include "StatusItemOnPanelTest.moc"
