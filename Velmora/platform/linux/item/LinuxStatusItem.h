#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/item/StatusNotifierItem.h"
#include "platform/linux/item/XEmbedStatusItem.h"

#include <memory>
#include <optional>

namespace orvella {

/// The status item by the protocol that the desktop's panel speaks: StatusNotifierItem wherever there is a watcher for
/// it, and in an X11 session without one XEmbed. Panels come and go, so the choice is made anew whenever a watcher
/// does; there is never more than one item. Needs the QApplication.
class LinuxStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    LinuxStatusItem(QDBusConnection bus, StatusNotifierItem::Identity identity, ActivationTokens& tokens);

    [[nodiscard]] bool keepsPlaceInSettings() const override { return false; }

    void show(Handlers handlers) override;
    void setAppearance(const StatusAppearance& appearance) override;
    [[nodiscard]] std::optional<QRect> place() const override;

private:
    void choose(bool hasWatcher);
    void embed();

    Handlers m_handlers;
    StatusAppearance m_appearance;
    StatusNotifierItem m_notifier;
    /// Whether icons of Qt's are for XEmbed trays, as far as is known. That they are not is for good.
    bool m_mayEmbed = true;
    /// There while no watcher is.
    std::unique_ptr<XEmbedStatusItem> m_embedded;
};

} // namespace orvella
