#pragma once

#include <QObject>
#include <QPointer>

#include <functional>
#include <utility>
#include <vector>

namespace orvella {

/// The owner of published properties. Its observers are told before any of them is assigned.
class Observable : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

Q_SIGNALS:
    void willChange();
};

/// An observable property. Read it by calling it, write it by assigning.
///
/// Every assignment is announced before it happens, equal value or not.
template <class T> class Published {
public:
    Published(Observable* owner, T initial)
        : m_owner(owner)
        , m_value(std::move(initial))
    {
    }

    Published(const Published&) = delete;
    Published& operator=(const Published&) = delete;

    [[nodiscard]] const T& operator()() const { return m_value; }

    Published& operator=(T value)
    {
        Q_EMIT m_owner->willChange();
        for (const auto& subscription : m_subscriptions)
            deliver(subscription, value);
        m_value = std::move(value);
        return *this;
    }

    /// Hands `receive` the current value and then every assigned one, in order, each from the main loop and not from
    /// inside the assignment. Ends with `context`.
    void subscribe(QObject* context, std::function<void(const T&)> receive)
    {
        m_subscriptions.push_back({context, std::move(receive)});
        deliver(m_subscriptions.back(), m_value);
    }

private:
    struct Subscription {
        QPointer<QObject> context;
        std::function<void(const T&)> receive;
    };

    static void deliver(const Subscription& subscription, const T& value)
    {
        if (!subscription.context)
            return;
        QMetaObject::invokeMethod(
            subscription.context.data(), [receive = subscription.receive, value] { receive(value); },
            Qt::QueuedConnection);
    }

    Observable* m_owner;
    T m_value;
    std::vector<Subscription> m_subscriptions;
};

} // namespace orvella
