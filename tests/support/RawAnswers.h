#pragma once

#include "support/RawServer.h"

#include <chrono>

namespace orvella::answer {

/// A whole reply with its length. `headers` are whole lines, each with its CR LF.
[[nodiscard]] QByteArray http(int status, const QByteArray& body, const QByteArray& headers = {});

/// Sends such a reply and ends the connection.
[[nodiscard]] RawServer::Answer reply(int status, const QByteArray& body = {}, const QByteArray& headers = {});
/// Sends just these bytes and ends the connection in good order.
[[nodiscard]] RawServer::Answer bytesThenEnd(const QByteArray& bytes);
/// Sends just these bytes and breaks the connection.
[[nodiscard]] RawServer::Answer bytesThenReset(const QByteArray& bytes);
/// Sends just these bytes and nothing more, ever.
[[nodiscard]] RawServer::Answer bytesThenSilence(const QByteArray& bytes);
/// Sends `bytes`, then `dripping` one byte at a time without end.
[[nodiscard]] RawServer::Answer bytesThenDrip(
    const QByteArray& bytes, const QByteArray& dripping, std::chrono::milliseconds pause);
/// Says nothing and keeps the connection.
[[nodiscard]] RawServer::Answer silence();

} // namespace orvella::answer
