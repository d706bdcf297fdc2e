#pragma once

#include "api/Transport.h"

#include <QByteArray>

#include <chrono>
#include <functional>
#include <optional>

namespace orvella {

class Proxies;

/// The bounds of one request, and its way. The program uses the bounds as they are; tests use shorter ones.
struct CurlOptions {
    /// From the start of the sending to the last byte of the reply, waiting and dripping included.
    std::chrono::milliseconds limit = Transport::kLongestExchange;
    /// The greatest body that is taken, in bytes.
    qsizetype greatestReply = 1'048'576;
    /// A PEM file of certificate authorities to trust in place of the system's, unless it is empty.
    QByteArray authorities = {};
    /// Asked before each request, where the environment names no proxy. Without them the environment alone decides.
    std::optional<std::reference_wrapper<const Proxies>> proxies = {};
};

} // namespace orvella
