#pragma once

#include "platform/Updater.h"

namespace orvella {

class CocoaUpdater;

/// The update framework in the application's bundle, with its own schedule and its own windows. Without it there are no
/// updates, and nothing is said.
class MacUpdater final : public Updater {
public:
    explicit MacUpdater(CocoaUpdater& updater);

    void start() override;
    void checkForUpdates() override;

private:
    CocoaUpdater& m_updater;
};

} // namespace orvella
