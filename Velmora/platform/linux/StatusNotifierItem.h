#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/PanelToneWatch.h"
#include "platform/linux/StatusNotifierAdaptor.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include <functional>
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
    /// `id` is the program's identifier, the same as that of its desktop entry.
    StatusNotifierItem(QDBusConnection bus, QString id);
    ~StatusNotifierItem() override;

    void show(std::function<void()> clicked) override;
    void setAppearance(const StatusAppearance& appearance) override;

    [[nodiscard]] std::optional<QPoint> lastClick() const override { return m_lastClick; }

    /// The right to bring a window to the front that came with the last click; empty where there is none. It is good
    /// for one window, so it is given out once.
    [[nodiscard]] QString takeActivationToken();

private Q_SLOTS:
    /// Registers with the watcher that is there, unless it knows the item already.
    void findWatcher();

private:
    void drawPictures();
    void refresh();
    void registerAt(const QString& watcher);
    void activated(QPoint reported);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_watcherOwners;
    PanelToneWatch m_panel;
    StatusNotifierAdaptor* m_adaptor;
    StatusAppearance m_appearance;
    StatusPixmaps m_dollar;
    StatusPixmaps m_dollarAd;
    /// The unique name of the watcher that knows the item.
    QString m_watcher;
    std::function<void()> m_clicked;
    std::optional<QPoint> m_lastClick;
    QString m_activationToken;
};

} // namespace orvella
