#pragma once

#include <xcb/xinput.h>

namespace orvella {

/// libxcb-xinput, loaded when presses are first listened for. The functions are its own, and not to be called
/// where `isReady` is false.
class InputLibrary final {
public:
    InputLibrary();

    [[nodiscard]] bool isReady() const { return m_isReady; }

    decltype(&xcb_input_id) id = nullptr;
    decltype(&xcb_input_xi_query_version) queryVersion = nullptr;
    decltype(&xcb_input_xi_query_version_reply) queryVersionReply = nullptr;
    decltype(&xcb_input_xi_select_events) selectEvents = nullptr;

private:
    bool m_isReady = false;
};

} // namespace orvella
