#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QVariant>

#include <chrono>
#include <optional>

namespace orvella {

/// A question to a service of the desktop for a decision that is due now: one that is not there is not started, and is
/// waited for only shortly. Ask all that is needed before waiting for the first answer.
class PromptCall final {
public:
    static constexpr std::chrono::milliseconds kPatience {100};

    /// Sends the question. Where the bus is not there, nobody answers.
    PromptCall(const QDBusConnection& bus, QDBusMessage question);

    /// Waits for the first value of the answer, one in a variant without the variant. Nothing where there is no answer
    /// within `kPatience` of the question, and where it is an error or has no value.
    [[nodiscard]] std::optional<QVariant> value();

    /// The same, where the value is of this very type.
    template <class Value> [[nodiscard]] std::optional<Value> valueAs()
    {
        const auto answer = value();
        const bool isOfType = answer && answer->metaType() == QMetaType::fromType<Value>();
        return isOfType ? std::optional(answer->value<Value>()) : std::nullopt;
    }

private:
    std::optional<QDBusPendingCall> m_call;
};

} // namespace orvella
