#include "platform/linux/item/LinuxStatusItem.h"
#include "support/PanelProcess.h"
#include "support/VirtualDesktop.h"

#include <QApplication>
#include <QDBusMessage>
#include <QDBusReply>
#include <QPalette>
#include <QScreen>
#include <QTest>
#include <QWindow>

#include <algorithm>
#include <map>
#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const StatusAppearance kBalance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $1.25 available"_s};
const StatusAppearance kAdReady {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s};

/// What is to be known of a panel to test on it.
struct Panel {
    PanelTone tone;
    bool hostsStatusNotifierItem;
    /// Opens its own menu on a right click, unless the item exports one for it to show.
    bool keepsRightClicks = false;
};

const std::map<QString, Panel> kPanels {
    {u"xfce4-panel"_s, {PanelTone::light, true, true}},
    {u"lxqt-panel"_s, {PanelTone::dark, true}},
    {u"tint2"_s, {PanelTone::dark, false}},
};

/// In pixels, with a little of what is below it.
constexpr int kPanelHeight = 40;
/// A panel may take its time on a busy machine.
constexpr int kPatienceMs = 30'000;

/// "$AD" at 22 pixels.
constexpr QSize kWordSize(22, 18);

/// The items that the panel's watcher knows.
int registeredItems()
{
    auto question = QDBusMessage::createMethodCall(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
        u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.kde.StatusNotifierWatcher"_s << u"RegisteredStatusNotifierItems"_s;
    const QDBusReply<QDBusVariant> items = QDBusConnection::sessionBus().call(question);
    return static_cast<int>(items.value().variant().toStringList().size());
}

/// The windows that Qt has made for a tray.
int trayWindows()
{
    const auto windows = QGuiApplication::allWindows();
    return static_cast<int>(std::ranges::count_if(
        windows, [](const QWindow* window) { return window->objectName().startsWith(u"QSystemTrayIconSys"); }));
}

} // namespace

/// The status item in a real panel, clicked by a real pointer. The environment says which panel.
class StatusItemOnPanelTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(kPanels.contains(m_name));
        m_is = kPanels.at(m_name);
        // Without a settings service no palette says how dark the panel is.
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Window, m_is.tone == PanelTone::light ? Qt::white : Qt::black);
        QApplication::setPalette(palette);
        m_green = statusColour(StatusAppearance::Tone::green, m_is.tone);
        m_label = statusColour(StatusAppearance::Tone::label, m_is.tone);
        QVERIFY(m_panel.start());
    }

    void init()
    {
        showItem();
        QTRY_VERIFY_WITH_TIMEOUT(isInPanelOnce(), kPatienceMs);
        m_clicks = 0;
        m_menuPlaces.clear();
    }

    void cleanup()
    {
        removeItem();
        QTRY_VERIFY_WITH_TIMEOUT(!shown(m_green), kPatienceMs);
    }

    void thePanelShowsTheIconUnscaled()
    {
        const auto word = [this] { return shown(m_green).value_or(QRect()); };

        QTRY_COMPARE_WITH_TIMEOUT(word().size(), kWordSize, kPatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(
            word().bottom() < QGuiApplication::primaryScreen()->availableGeometry().top(), kPatienceMs);
    }

    void theIconChangesWithTheAppearance()
    {
        m_item->setAppearance(kBalance);

        QTRY_VERIFY_WITH_TIMEOUT(!shown(m_green) && shown(m_label), kPatienceMs);
    }

    void aClickIsHeardWithItsPlace()
    {
        const auto centre = shown(m_green).value_or(QRect()).center();

        QVERIFY(VirtualDesktop::click(centre));

        QTRY_COMPARE_WITH_TIMEOUT(m_clicks, 1, kPatienceMs);
        const auto place = m_item->place().value_or(QRect());
        QVERIFY(place.contains(centre));
        QCOMPARE(place.size(), m_is.hostsStatusNotifierItem ? QSize(1, 1) : QSize(22, 22));
        QCOMPARE(m_menuPlaces, QList<QPoint>());
    }

    void aRightClickAsksForTheMenuUnlessThePanelKeepsIt()
    {
        const auto centre = shown(m_green).value_or(QRect()).center();

        QVERIFY(VirtualDesktop::click(centre, 3));

        if (!m_is.keepsRightClicks)
            QTRY_COMPARE_WITH_TIMEOUT(m_menuPlaces, QList<QPoint> {centre}, kPatienceMs);
        QCOMPARE(m_clicks, 0);
        QTRY_VERIFY_WITH_TIMEOUT(clickIsHeardOnceMenusAreClosed(centre), kPatienceMs);
    }

    void afterTheOtherButtonsTheNextClickIsHeard()
    {
        const auto centre = shown(m_green).value_or(QRect()).center();

        QVERIFY(VirtualDesktop::click(centre, 2));
        QVERIFY(VirtualDesktop::click(centre, 4));
        QVERIFY(VirtualDesktop::click(centre));

        QTRY_COMPARE_WITH_TIMEOUT(m_clicks, 1, kPatienceMs);
    }

    void aRestartedPanelShowsTheOneIconAgain()
    {
        m_panel.stop();
        QTRY_VERIFY_WITH_TIMEOUT(!shown(m_green), kPatienceMs);

        QVERIFY(m_panel.start());

        QTRY_VERIFY_WITH_TIMEOUT(isInPanelOnce(), kPatienceMs);
        QVERIFY(VirtualDesktop::click(shown(m_green).value_or(QRect()).center()));
        QTRY_COMPARE_WITH_TIMEOUT(m_clicks, 1, kPatienceMs);
        QVERIFY(isOneByThePanelsProtocol());
    }

    void anItemThatIsShownBeforeThePanelStartsIsThereOnce()
    {
        m_panel.stop();
        removeItem();
        showItem();

        QVERIFY(m_panel.start());

        QTRY_VERIFY_WITH_TIMEOUT(isInPanelOnce(), kPatienceMs);
    }

private:
    void showItem()
    {
        // Of its own, because panels keep an item until its connection is gone.
        const auto bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"item"_s);
        m_item = std::make_unique<LinuxStatusItem>(
            bus, StatusNotifierItem::Identity {u"org.example.orvella"_s, {}}, m_tokens);
        m_item->setAppearance(kAdReady);
        m_item->show({[this] { ++m_clicks; }, [this](QPoint place) { m_menuPlaces.append(place); }});
    }

    void removeItem()
    {
        m_item.reset();
        QDBusConnection::disconnectFromBus(u"item"_s);
    }

    /// Where the panel shows a colour.
    static std::optional<QRect> shown(const QColor& colour)
    {
        const auto* screen = QGuiApplication::primaryScreen();
        const QRect strip(QPoint(), QSize(screen->size().width(), kPanelHeight));
        return VirtualDesktop::find(VirtualDesktop::screenshot(strip), colour);
    }

    [[nodiscard]] bool isOneByThePanelsProtocol() const
    {
        return registeredItems() == (m_is.hostsStatusNotifierItem ? 1 : 0)
            && trayWindows() == (m_is.hostsStatusNotifierItem ? 0 : 1);
    }

    /// Two icons beside each other would be wider.
    [[nodiscard]] bool isInPanelOnce() const
    {
        const auto word = shown(m_green);
        return word && word->size() == kWordSize && isOneByThePanelsProtocol();
    }

    [[nodiscard]] bool clickIsHeardOnceMenusAreClosed(QPoint place) const
    {
        return VirtualDesktop::run(u"xdotool"_s, {u"key"_s, u"Escape"_s}) && VirtualDesktop::click(place)
            && QTest::qWaitFor([this] { return m_clicks > 0; }, 1000);
    }

    const QString m_name = qEnvironmentVariable("ORVELLA_PANEL");
    Panel m_is {};
    QColor m_green;
    QColor m_label;
    PanelProcess m_panel {m_name};
    ActivationTokens m_tokens;
    std::unique_ptr<LinuxStatusItem> m_item;
    int m_clicks = 0;
    QList<QPoint> m_menuPlaces;
};

QTEST_MAIN(StatusItemOnPanelTest)

#include "StatusItemOnPanelTest.moc"
