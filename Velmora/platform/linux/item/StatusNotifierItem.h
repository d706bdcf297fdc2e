#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/item/ActivationTokens.h"
#include "platform/linux/item/PanelToneWatch.h"
#include "platform/linux/item/ScreenLayoutWatch.h"
#include "platform/linux/item/StatusNotifierAdaptor.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QPoint>
#include <QString>

#include <optional>

namespace orvella {

/// The status item in the panels that host StatusNotifierItem: KDE, XFCE, LXQt, MATE, Cinnamon, waybar, and GNOME with
/// an extension.
///
/// It waits for the panel for as long as it takes, and is there again whenever a panel starts anew. Without a session
/// bus it does nothing.
class StatusNotifierItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    /// What the panels know the program by.
    struct Identity {
        /// The same as that of its desktop entry.
        QString id;
        /// The icon that a panel finds in its theme and draws in the colour of its own text; empty where there is none.
        QString symbolicIcon;
    };

    StatusNotifierItem(QDBusConnection bus, Identity identity, ActivationTokens& tokens);
    ~StatusNotifierItem() override;

    [[nodiscard]] bool keepsPlaceInSettings() const override { return false; }

    void show(Handlers handlers) override;
    void setAppearance(const StatusAppearance& appearance) override;

    /// The point of the last click, until a panel may have moved the item.
    [[nodiscard]] std::optional<QRect> place() const override;

    /// Asks the bus and waits for its answer.
    [[nodiscard]] bool isWatcherThere() const;

Q_SIGNALS:
    /// Whether there is a watcher to register with, as soon as that is known and after every change. But for one that
    /// is there when the item is shown, the item registers only when all listeners have heard of it.
    void watcherKnown(bool isThere);

private Q_SLOTS:
    void findWatcher();

private:
    void refresh();
    [[nodiscard]] QDBusMessage registrationAt(const QString& watcher) const;
    /// Registers with the watcher of this unique name, unless it knows the item already.
    void registerAt(const QString& watcher);
    void clicked(QPoint reported);
    void menuRequested(QPoint reported);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcherOwners;
    PanelToneWatch m_panel;
    ScreenLayoutWatch m_screens;
    QString m_symbolicIcon;
    StatusNotifierAdaptor* m_adaptor;
    StatusAppearance m_appearance;
    /// The unique name of the watcher that knows the item.
    QString m_watcher;
    /// To whoever had the watcher's name when the item was shown, until its owner is known.
    std::optional<QDBusPendingCall> m_firstRequest;
    Handlers m_handlers;
    std::optional<QPoint> m_lastClick;
};

} // namespace orvella
