#pragma once

#include "platform/OverlaySettings.h"
#include "platform/Platform.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace orvella {

class Instance;

/// The services of the system that the program was built for. Made once, after the application object.
class SystemPlatform final {
public:
    /// What has to be settled before there is an application object.
    static void prepareProcess();

    /// `profile` is a folder that takes everything that would otherwise lie in the viewer's own places.
    SystemPlatform(const std::optional<QString>& profile, const std::vector<OverlaySettings::Entry>& overlays);
    SystemPlatform(const SystemPlatform&) = delete;
    SystemPlatform& operator=(const SystemPlatform&) = delete;
    ~SystemPlatform();

    [[nodiscard]] Platform lend();

    /// Claimed by the program before it does anything.
    [[nodiscard]] Instance& instance();

private:
    struct Services;
    std::unique_ptr<Services> m_services;
};

} // namespace orvella
