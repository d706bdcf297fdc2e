#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/item/PanelToneWatch.h"

#include <QObject>

#include <memory>
#include <optional>

class QSystemTrayIcon;

namespace orvella {

/// The status item in the older panels of X11, which take a window of the program into their tray by the XEmbed
/// protocol. It waits for a tray for as long as it takes, and is there again whenever one starts anew.
///
/// It must not be shown where there was a watcher for StatusNotifierItem when it was made: Qt looks for one when the
/// first icon of the process is made, and keeps to what it found for all icons that follow. Needs the QApplication.
class XEmbedStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    XEmbedStatusItem();
    /// The icon is out of the tray at its end.
    ~XEmbedStatusItem() override;

    [[nodiscard]] bool keepsPlaceInSettings() const override { return false; }

    void show(Handlers handlers) override;
    void setAppearance(const StatusAppearance& appearance) override;
    [[nodiscard]] std::optional<QRect> place() const override;

private:
    void draw();
    /// Does what a press of a mouse button on the icon asks for.
    void pressed(int reason);

    PanelToneWatch m_panel;
    StatusAppearance m_appearance;
    Handlers m_handlers;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace orvella
