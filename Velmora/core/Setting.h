#pragma once

#include "base/Published.h"
#include "platform/SettingsStore.h"

namespace orvella {

/// An observable Boolean that is kept between runs. Its rule runs after every assignment, equal value or not, and
/// decides what is stored; loading the kept value runs no rule.
class Setting final {
public:
    Setting(Observable* owner, SettingsStore& store, QString key, bool fallback, std::function<void()> assigned)
        : m_value(owner, store.boolean(key).value_or(fallback))
        , m_store(store)
        , m_key(std::move(key))
        , m_assigned(std::move(assigned))
    {
    }

    [[nodiscard]] bool operator()() const { return m_value(); }

    Setting& operator=(bool value)
    {
        m_value = value;
        m_assigned();
        return *this;
    }

    /// Keeps the current value.
    void store() { m_store.setBoolean(m_key, m_value()); }

private:
    Published<bool> m_value;
    SettingsStore& m_store;
    QString m_key;
    std::function<void()> m_assigned;
};

} // namespace orvella
