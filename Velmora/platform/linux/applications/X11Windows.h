#pragma once

#include "platform/linux/x11/X11Display.h"

#include <QString>

#include <vector>

namespace orvella {

/// The windows of the programs of an X11 session, as the window manager lists them.
class X11Windows final {
public:
    struct Window {
        quint32 id = 0;
        /// The two parts of WM_CLASS; empty where the window has none.
        QString instance;
        QString windowClass;
        /// The desktop file ID that the window names itself; empty where it names none.
        QString applicationId;
        /// A window or a dialogue of its own: not a panel, a desktop, a splash screen, nor one that keeps off the task
        /// bar.
        bool isRegular = false;
    };

    X11Windows() = delete;

    /// In the order in which the windows were opened. Empty where no window manager keeps a list.
    [[nodiscard]] static std::vector<Window> list(const X11Display& display);
};

} // namespace orvella
