#pragma once

#include "platform/LoginItem.h"

namespace orvella {

class CocoaLoginItem;

/// The application among the login items of the system's settings.
class MacLoginItem final : public LoginItem {
public:
    explicit MacLoginItem(CocoaLoginItem& item);

    // A failure has the system's own words.
    Result<void> registerItem() override;
    Result<void> unregisterItem() override;
    [[nodiscard]] Status status() const override;

    /// It changes within the calls only.
    void watch(std::function<void(const Result<void>&)> /*answered*/) override {}

private:
    CocoaLoginItem& m_item;
};

} // namespace orvella
