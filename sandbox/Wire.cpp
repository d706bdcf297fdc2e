#include "sandbox/Wire.h"

namespace orvella::sandbox {

namespace {

constexpr int kNoContent = 204;
constexpr int kNotModified = 304;

bool hasBody(const Reply& reply)
{
    return reply.status != kNoContent && reply.status != kNotModified;
}

} // namespace

QByteArray head(const Reply& reply)
{
    auto text = "HTTP/1.1 " + QByteArray::number(reply.status) + " \r\n";
    if (hasBody(reply)) {
        text += "content-type: " + reply.contentType + "\r\n";
        text += "content-length: " + QByteArray::number(reply.body.size()) + "\r\n";
    }
    for (const auto& [name, value] : reply.headers)
        text += name + ": " + value + "\r\n";
    text += "cache-control: no-store\r\nx-content-type-options: nosniff\r\nconnection: close\r\n\r\n";
    return text;
}

QByteArray written(const Reply& reply)
{
    return hasBody(reply) ? head(reply) + reply.body : head(reply);
}

} // namespace orvella::sandbox
