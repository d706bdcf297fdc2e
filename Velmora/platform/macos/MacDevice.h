#pragma once

#include "platform/Device.h"

namespace orvella {

class CocoaWorkspace;

/// This Mac and the application's bundle.
class MacDevice final : public Device {
public:
    explicit MacDevice(const CocoaWorkspace& workspace);

    /// The name that the viewer gave the computer.
    [[nodiscard]] std::optional<QString> name() const override;
    [[nodiscard]] std::optional<QString> applicationVersion() const override;

private:
    const CocoaWorkspace& m_workspace;
};

} // namespace orvella
