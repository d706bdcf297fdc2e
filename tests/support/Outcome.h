#pragma once

#include <QCoroTask>

#include <memory>
#include <optional>
#include <utility>
#include <variant>

namespace orvella {

/// Watches a task: empty until it is over, then its result.
template <class T> class Outcome final {
public:
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

    explicit Outcome(QCoro::Task<T> task) { watch(std::move(task), m_value); }

    [[nodiscard]] bool isThere() const { return m_value->has_value(); }

    [[nodiscard]] const Value& operator*() const { return **m_value; }

private:
    using Slot = std::shared_ptr<std::optional<Value>>;

    static QCoro::Task<> watch(QCoro::Task<T> task, Slot value)
    {
        if constexpr (std::is_void_v<T>) {
            co_await std::move(task);
            value->emplace();
        } else {
            value->emplace(co_await std::move(task));
        }
    }

    Slot m_value = std::make_shared<std::optional<Value>>();
};

} // namespace orvella
