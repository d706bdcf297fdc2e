#pragma once

#include "platform/StatusItem.h"

namespace orvella {

class CocoaStatusItem;

/// The text in the menu bar. Popovers of the system's own hang from it, so its place is nobody's business.
class MacStatusItem final : public StatusItem {
public:
    explicit MacStatusItem(CocoaStatusItem& item);

    [[nodiscard]] bool keepsPlaceInSettings() const override { return true; }

    /// It has no menu: every click is a click.
    void show(Handlers handlers) override;
    void setAppearance(const StatusAppearance& appearance) override;

    [[nodiscard]] std::optional<QRect> place() const override { return std::nullopt; }

private:
    CocoaStatusItem& m_item;
    StatusAppearance m_appearance;
    bool m_isShown = false;
};

} // namespace orvella
