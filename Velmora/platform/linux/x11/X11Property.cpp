#include "platform/linux/x11/X11Property.h"

#include <utility>

namespace orvella {

X11Property::X11Property(xcb_connection_t* connection, const Question& question)
    : m_connection(connection)
    , m_pending(
          xcb_get_property(connection, 0, question.window, question.property, question.type, 0, question.mostUnits))
{
}

X11Property::X11Property(X11Property&& other) noexcept
    : m_connection(other.m_connection)
    , m_pending(std::exchange(other.m_pending, std::nullopt))
{
}

X11Property::~X11Property()
{
    if (m_pending)
        xcb_discard_reply(m_connection, m_pending->sequence);
}

std::optional<std::vector<uint32_t>> X11Property::words()
{
    const auto reply = answer(32);
    if (!reply)
        return std::nullopt;
    const auto* const first = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
    return std::vector<uint32_t>(first, first + reply->value_len);
}

std::optional<uint32_t> X11Property::word()
{
    const auto all = words();
    return all && !all->empty() ? std::optional(all->front()) : std::nullopt;
}

std::optional<QByteArray> X11Property::bytes()
{
    const auto reply = answer(8);
    if (!reply)
        return std::nullopt;
    return QByteArray(
        static_cast<const char*>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get()));
}

X11Reply<xcb_get_property_reply_t> X11Property::answer(int format)
{
    const auto cookie = std::exchange(m_pending, std::nullopt);
    if (!cookie)
        return nullptr;
    X11Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(m_connection, *cookie, nullptr));
    return reply && reply->format == format ? std::move(reply) : nullptr;
}

} // namespace orvella
