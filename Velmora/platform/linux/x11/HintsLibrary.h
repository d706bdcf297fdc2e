#pragma once

#include <xcb/xcb_ewmh.h>

namespace orvella {

/// libxcb-ewmh, loaded when a window manager is first asked. The functions are its own, and not to be called
/// where `isReady` is false.
class HintsLibrary final {
public:
    HintsLibrary();

    [[nodiscard]] bool isReady() const { return m_isReady; }

    decltype(&xcb_ewmh_init_atoms) initAtoms = nullptr;
    decltype(&xcb_ewmh_init_atoms_replies) initAtomsReplies = nullptr;
    decltype(&xcb_ewmh_set_wm_user_time) setUserTime = nullptr;
    decltype(&xcb_ewmh_request_change_wm_desktop) requestWorkspace = nullptr;
    decltype(&xcb_ewmh_request_change_active_window) requestActivation = nullptr;

private:
    bool m_isReady = false;
};

} // namespace orvella
