#pragma once

#include "platform/NativePopover.h"

#include <memory>

namespace orvella {

class CocoaPopover;

/// A popover of AppKit's, around the view that the toolkit has for a window.
class MacPopover final : public NativePopover {
public:
    explicit MacPopover(std::unique_ptr<CocoaPopover> popover);
    ~MacPopover() override;

    void show(QWindow& content, QSize size, const std::optional<Part>& below) override;
    void performClose() override;
    [[nodiscard]] bool isShown() const override;

private:
    std::unique_ptr<CocoaPopover> m_popover;
};

} // namespace orvella
