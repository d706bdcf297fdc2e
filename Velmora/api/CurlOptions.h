#pragma once

#include <QByteArray>

#include <chrono>

namespace orvella {

/// The bounds of one request. The program uses them as they are; tests use shorter ones.
struct CurlOptions {
    /// From the start of the sending to the last byte of the reply, waiting and dripping included.
    std::chrono::milliseconds limit = std::chrono::seconds(60);
    /// The greatest body that is taken, in bytes.
    qsizetype greatestReply = 1'048'576;
    /// A PEM file of certificate authorities to trust in place of the system's, unless it is empty.
    QByteArray authorities;
};

} // namespace orvella
