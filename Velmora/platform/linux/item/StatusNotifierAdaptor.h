#pragma once

#include "platform/linux/bus/SealedAdaptor.h"
#include "platform/linux/item/StatusIcon.h"
#include "platform/linux/item/StatusPixmap.h"
#include "platform/linux/item/StatusToolTip.h"

#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>

namespace orvella {

/// The status item as the bars see it on the session bus: the interface org.kde.StatusNotifierItem.
///
/// A bar is told of a change only when there is one. There is no menu object, because with one some bars open the menu
/// on every click; and the property XAyatanaLabel is left out on purpose, because the MATE panel hides the icon of
/// every item that has it.
///
/// https://www.freedesktop.org/wiki/Specifications/StatusNotifierItem/
class StatusNotifierAdaptor final : public SealedAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierItem")

    Q_PROPERTY(QString Category READ category)
    Q_PROPERTY(QString Id READ id)
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(QString Status READ status)
    Q_PROPERTY(int WindowId READ windowId)
    Q_PROPERTY(bool ItemIsMenu READ itemIsMenu)
    Q_PROPERTY(QString IconName READ iconName)
    Q_PROPERTY(QString IconThemePath READ noName)
    Q_PROPERTY(orvella::StatusPixmaps IconPixmap READ icon)
    Q_PROPERTY(QString OverlayIconName READ noName)
    Q_PROPERTY(orvella::StatusPixmaps OverlayIconPixmap READ noPixmaps)
    Q_PROPERTY(QString AttentionIconName READ noName)
    Q_PROPERTY(orvella::StatusPixmaps AttentionIconPixmap READ attentionIcon)
    Q_PROPERTY(QString AttentionMovieName READ noName)
    Q_PROPERTY(orvella::StatusToolTip ToolTip READ toolTip)

public:
    /// What the bars ask of the program.
    struct Handlers {
        /// The item was clicked, where the bar says.
        std::function<void(QPoint)> activate;
        /// The viewer asks for the item's menu, where the bar says.
        std::function<void(QPoint)> contextMenu;
        /// The right to bring a window to the front, for the click that follows.
        std::function<void(const QString&)> receiveActivationToken;
    };

    /// `item` is the object on the bus; `id` is the program's identifier.
    StatusNotifierAdaptor(QObject* item, QString id, Handlers handlers);

    void setIcon(const StatusIcon& icon);
    /// For while the item needs attention.
    void setAttentionIcon(const StatusIcon& icon);
    void setNeedsAttention(bool needsAttention);
    void setDescription(const QString& description);

    [[nodiscard]] QString category() const;

    [[nodiscard]] QString id() const { return m_id; }

    /// Never empty: some bars show an item without a title as a blank.
    [[nodiscard]] QString title() const;

    [[nodiscard]] QString status() const;

    [[nodiscard]] int windowId() const { return 0; }

    [[nodiscard]] bool itemIsMenu() const { return false; }

    [[nodiscard]] QString iconName() const { return m_icon.name(); }

    [[nodiscard]] QString noName() const { return {}; }

    [[nodiscard]] StatusPixmaps noPixmaps() const { return {}; }

    [[nodiscard]] StatusPixmaps icon() const { return m_icon.pixmaps(); }

    [[nodiscard]] StatusPixmaps attentionIcon() const { return m_attentionIcon.pixmaps(); }

    [[nodiscard]] StatusToolTip toolTip() const;

public Q_SLOTS:
    // The names and signatures are the protocol's.
    void Activate(int x, int y);
    void SecondaryActivate(int x, int y);
    void ContextMenu(int x, int y);
    void Scroll(int delta, const QString& orientation);
    void ProvideXdgActivationToken(const QString& token);

Q_SIGNALS:
    void NewTitle();
    void NewIcon();
    void NewAttentionIcon();
    void NewToolTip();
    void NewStatus(const QString& status);

private:
    QString m_id;
    Handlers m_handlers;
    QString m_description;
    bool m_needsAttention = false;
    StatusIcon m_icon;
    StatusIcon m_attentionIcon;
};

} // namespace orvella
