#pragma once

#include "platform/Platform.h"
#include "ui/look/Look.h"

#include <memory>

namespace orvella {

class AppState;
class LaunchWindow;

/// The startup window: the program's one ordinary window. Closing it hides it.
class LaunchWindowController final {
public:
    LaunchWindowController(const Look& look, AppState& state, const Platform& platform);
    ~LaunchWindowController();

    /// Brings the window to the front with the keyboard.
    void show();
    [[nodiscard]] QWidget& window();

private:
    Platform m_platform;
    std::unique_ptr<LaunchWindow> m_window;
};

} // namespace orvella
