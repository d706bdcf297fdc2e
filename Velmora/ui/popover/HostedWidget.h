#pragma once

#include "platform/NativePopover.h"
#include "ui/popover/PopoverPlacement.h"

#include <memory>

namespace orvella {

/// A top-level widget that is shown in a popover of the window system's own, instead of a window.
class HostedWidget final {
public:
    HostedWidget(std::unique_ptr<NativePopover> popover, QWidget& widget);

    /// Without an anchor, as with one that is none of the program's widgets, it hangs from the status item.
    void open(QSize size, const std::optional<PopoverAnchor>& anchor);
    void performClose();
    [[nodiscard]] bool isShown() const { return m_popover->isShown(); }

private:
    std::unique_ptr<NativePopover> m_popover;
    QWidget& m_widget;
};

} // namespace orvella
