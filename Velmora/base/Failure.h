#pragma once

#include <QString>

namespace orvella {

/// Why something did not succeed, for the program and for the viewer.
struct Failure {
    enum class Kind {
        /// The flow that asked was stopped. Never shown to the viewer.
        cancelled,
        /// No answer came from the service: no network, a cut connection, a failed TLS handshake.
        unreachable,
        /// No complete answer came in time.
        timedOut,
        /// An answer came whose status is not a success.
        badServerResponse,
        /// The text is not JSON, or not the record that was expected.
        undecodable,
        /// The request could not be written as JSON.
        unencodable,
        /// The system refused: the login items, the file system, an option of the command line.
        refused,
    };

    Kind kind;
    /// A plain sentence for the viewer: no addresses, no codes, no secrets.
    QString description;

    [[nodiscard]] bool isCancellation() const { return kind == Kind::cancelled; }

    friend bool operator==(const Failure&, const Failure&) = default;
};

} // namespace orvella
