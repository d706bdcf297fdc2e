#pragma once

#include <expected>
#include <utility>
#include <variant>

namespace orvella {

/// Why the keyring did not do what it was asked to.
enum class KeyringTrouble {
    /// There is no Secret Service, or no session bus.
    absent,
    /// The service left a call without an answer.
    silent,
    /// The viewer refused to unlock.
    refused,
    /// There is a service, and no collection in it that takes items, so nobody can say what it has.
    noCollection,
    /// Something is locked that was not when it was looked at.
    locked,
    /// Anything else: the service went away, or says that it failed. It may succeed when asked again.
    failed,
    /// The flow that asked was stopped.
    stopped,
};

/// What the keyring answers, or why it does not.
///
/// Not `std::expected` itself: a task with one whose value can be made from `nullptr` does not compile, because QCoro
/// compares its coroutine handle with `nullptr` and finds the comparison of `std::expected`.
template <class T = std::monostate> class [[nodiscard]] FromKeyring final {
public:
    FromKeyring() = default;

    // Both are implicit, as they are in std::expected: an answer or a trouble is returned as it is.
    explicit(false) FromKeyring(T value)
        : m_answer(std::move(value))
    {
    }

    explicit(false) FromKeyring(KeyringTrouble trouble)
        : m_answer(std::unexpect, trouble)
    {
    }

    explicit operator bool() const { return m_answer.has_value(); }

    [[nodiscard]] const T& operator*() const { return *m_answer; }

    [[nodiscard]] T& operator*() { return *m_answer; }

    [[nodiscard]] const T* operator->() const { return &*m_answer; }

    [[nodiscard]] KeyringTrouble trouble() const { return m_answer.error(); }

    friend bool operator==(const FromKeyring&, const FromKeyring&) = default;

private:
    std::expected<T, KeyringTrouble> m_answer;
};

} // namespace orvella
