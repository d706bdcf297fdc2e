#pragma once

#include "platform/Updater.h"
#include "updates/UpdateWindow.h"

#include <QPointer>

namespace orvella {

class WindowSystem;

/// Looks for updates when the viewer asks, in a window of its own. By itself it asks nobody: that there are updates is
/// what the desktop tells.
class PackageUpdater final : public Updater {
public:
    /// The bus that PackageKit is on.
    PackageUpdater(QDBusConnection bus, Clock& clock, WindowSystem& windows);
    PackageUpdater(const PackageUpdater&) = delete;
    PackageUpdater& operator=(const PackageUpdater&) = delete;
    ~PackageUpdater() override;

    void start() override {}

    /// There is one window: a second request brings it to the front.
    void checkForUpdates() override;

private:
    QDBusConnection m_bus;
    Clock& m_clock;
    WindowSystem& m_windows;
    /// Goes away when the viewer closes it.
    QPointer<UpdateWindow> m_window;
};

} // namespace orvella
