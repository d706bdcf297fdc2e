#pragma once

#include <chrono>

namespace orvella::sandbox {

/// What goes wrong with the answers to one call.
struct Fault {
    enum class Kind {
        none,
        /// The call is not carried out; its answer has the status and a reason.
        status,
        /// The call is carried out, then the connection is reset without an answer.
        reset,
        /// The call is carried out; its answer is a success whose body is not JSON.
        garbage,
        /// The call is carried out; its answer is cut in the middle of the body.
        truncated,
    };

    Kind kind = Kind::none;
    int status = 0;
    /// The call is carried out at once; its answer, spoiled or not, is held back for this long.
    std::chrono::milliseconds delay {0};

    friend bool operator==(const Fault&, const Fault&) = default;
};

} // namespace orvella::sandbox
