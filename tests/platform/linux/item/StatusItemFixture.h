#pragma once

#include "platform/linux/item/StatusNotifierItem.h"
#include "support/FakeStatusArea.h"

#include <QGuiApplication>
#include <QPalette>
#include <QTest>

#include <memory>

namespace orvella {

/// An item on the bus beside a status area that is not there yet, for a test to derive from.
class StatusItemFixture {
protected:
    static inline const StatusAppearance kBalance {
        QStringLiteral("$"), 18, StatusAppearance::Tone::label, QStringLiteral("Orvella · $1.25 available")};

    static inline const StatusAppearance kAdReady {
        QStringLiteral("$ AD"), 42, StatusAppearance::Tone::green, QStringLiteral("Orvella · ad ready")};

    void start()
    {
        setWindowColour(Qt::black);
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("item"));
        QVERIFY(m_bus.isConnected());
        m_tokens = {};
        makeItem({});
        m_area = std::make_unique<FakeStatusArea>();
        m_clicks = 0;
        m_menuPlaces.clear();
    }

    void finish()
    {
        m_area.reset();
        m_item.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(QStringLiteral("item"));
    }

    static void setWindowColour(const QColor& colour)
    {
        QPalette palette = QGuiApplication::palette();
        palette.setColor(QPalette::Window, colour);
        QGuiApplication::setPalette(palette);
    }

    void makeItem(const QString& symbolicIcon)
    {
        // The object's path on the bus has to be free.
        m_item.reset();
        m_item = std::make_unique<StatusNotifierItem>(
            m_bus, StatusNotifierItem::Identity {QStringLiteral("org.example.orvella"), symbolicIcon}, m_tokens);
        m_item->setAppearance(kBalance);
    }

    void show()
    {
        m_item->show({[this] { ++m_clicks; }, [this](QPoint place) { m_menuPlaces.append(place); }});
    }

    void showInArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);
    }

    QVariant read(const QString& name) { return m_area->read(m_bus.baseService(), name); }

    StatusPixmaps pixmaps(const QString& name)
    {
        const auto argument = read(name).value<QDBusArgument>();
        return qdbus_cast<StatusPixmaps>(argument);
    }

    QStringList signalsSent()
    {
        m_area->synchronise(m_bus.baseService());
        return m_area->takeSignals();
    }

    QDBusConnection m_bus {QString()};
    ActivationTokens m_tokens;
    std::unique_ptr<StatusNotifierItem> m_item;
    std::unique_ptr<FakeStatusArea> m_area;
    int m_clicks = 0;
    QList<QPoint> m_menuPlaces;
};

} // namespace orvella
