#include "platform/linux/bus/PromptCall.h"

#include <QDBusVariant>

namespace orvella {

PromptCall::PromptCall(const QDBusConnection& bus, QDBusMessage question)
{
    question.setAutoStartService(false);
    if (bus.isConnected())
        m_call = bus.asyncCall(question, static_cast<int>(kPatience.count()));
}

std::optional<QVariant> PromptCall::value()
{
    if (!m_call)
        return std::nullopt;
    m_call->waitForFinished();
    const auto reply = m_call->reply();
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return std::nullopt;
    auto value = reply.arguments().constFirst();
    return value.metaType() == QMetaType::fromType<QDBusVariant>() ? value.value<QDBusVariant>().variant() : value;
}

} // namespace orvella
