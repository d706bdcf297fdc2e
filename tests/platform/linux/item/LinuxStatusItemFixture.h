#pragma once

#include "platform/linux/item/LinuxStatusItem.h"
#include "support/FakeStatusArea.h"
#include "support/FakeTray.h"
#include "support/VirtualDesktop.h"

#include <QApplication>
#include <QCursor>
#include <QPalette>
#include <QScreen>
#include <QTest>

#include <memory>

namespace orvella {

/// An item beside a watcher on the session bus and a tray that are not there yet, for a test to derive from.
class LinuxStatusItemFixture {
protected:
    static inline const StatusAppearance kBalance {
        QStringLiteral("$"), 18, StatusAppearance::Tone::label, QStringLiteral("Orvella · $1.25 available")};

    /// Programs may take their time on a busy machine.
    static constexpr int kPatienceMs = 20'000;

    static inline const QColor kLightText {0xF1, 0xF3, 0xF5};

    void start()
    {
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Window, Qt::black);
        QApplication::setPalette(palette);

        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("item"));
        QVERIFY(m_bus.isConnected());
        makeItem(m_bus);
        m_area = std::make_unique<FakeStatusArea>();
        m_tray = std::make_unique<FakeTray>();
        m_iconsAtRegistration.clear();
        m_area->whenRegistered([this] { m_iconsAtRegistration.append(m_tray->icons()); });
    }

    void finish()
    {
        m_area.reset();
        m_item.reset();
        m_tray.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(QStringLiteral("item"));
    }

    /// Leaves a strip along the top edge to panels, as a window manager does.
    static bool reserveTop(int height)
    {
        const auto area = QStringLiteral("0,%1,1280,%2").arg(height).arg(720 - height);
        return VirtualDesktop::run(QStringLiteral("xprop"),
            {QStringLiteral("-root"), QStringLiteral("-f"), QStringLiteral("_NET_WORKAREA"), QStringLiteral("32c"),
                QStringLiteral("-set"), QStringLiteral("_NET_WORKAREA"), area});
    }

    static bool movePointer(QPoint place)
    {
        QCursor::setPos(place);
        return QTest::qWaitFor([place] { return QCursor::pos() == place; }, kPatienceMs);
    }

    void makeItem(const QDBusConnection& bus)
    {
        m_clicks = 0;
        m_menuPlaces.clear();
        m_item = std::make_unique<LinuxStatusItem>(
            bus, StatusNotifierItem::Identity {QStringLiteral("org.example.orvella"), {}}, m_tokens);
        m_item->setAppearance(kBalance);
    }

    void show()
    {
        m_item->show({[this] { ++m_clicks; }, [this](QPoint place) { m_menuPlaces.append(place); }});
    }

    void showInTray()
    {
        m_tray->start();
        show();
        // Once it is painted Qt has heard of the tray's start, at which it makes the icon anew.
        QTRY_VERIFY_WITH_TIMEOUT(shows(kLightText), kPatienceMs);
    }

    bool shows(const QColor& colour)
    {
        const auto place = m_tray->place();
        return place && VirtualDesktop::find(VirtualDesktop::screenshot(*place), colour);
    }

    QDBusConnection m_bus {QString()};
    ActivationTokens m_tokens;
    std::unique_ptr<LinuxStatusItem> m_item;
    std::unique_ptr<FakeStatusArea> m_area;
    std::unique_ptr<FakeTray> m_tray;
    /// What the tray showed each time the item registered with the watcher.
    QList<int> m_iconsAtRegistration;
    int m_clicks = 0;
    QList<QPoint> m_menuPlaces;
};

} // namespace orvella
