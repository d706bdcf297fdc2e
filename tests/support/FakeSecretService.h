#pragma once

#include <QByteArray>
#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QHash>
#include <QMap>
#include <QStringList>

#include <map>
#include <vector>

namespace orvella {

/// A Secret Service that misbehaves as the test wishes: it stays silent, fails, dies, or asks and waits.
///
/// It runs in the test's own main loop, on a connection of its own. There is one collection; secrets travel plainly.
class FakeSecretService final : public QDBusVirtualObject {
    Q_OBJECT

public:
    enum class Fault { silence, error, death };

    struct Item {
        QMap<QString, QString> attributes;
        QByteArray secret;
    };

    FakeSecretService() = default;
    ~FakeSecretService() override;

    /// Comes to the session bus.
    void start();
    /// Leaves it; what is under way there stays without an answer.
    void die();

    [[nodiscard]] static bool isThere();

    /// What the next call of this method meets, and those after it.
    void fail(const QString& method, Fault fault, int times = kAlways);
    void recover() { m_faults.clear(); }

    void put(const QString& service, const QByteArray& secret);
    /// How often the method was called.
    [[nodiscard]] int calls(const QString& method) const { return static_cast<int>(m_calls.count(method)); }

    /// How many calls it has kept silent on.
    [[nodiscard]] int unanswered() const { return m_unanswered; }

    /// The prompts that are up.
    [[nodiscard]] int prompts() const { return static_cast<int>(m_prompts.size()); }

    /// Answers the oldest prompt as the viewer would.
    void agree();
    void dismiss();

    std::map<QString, Item> items;
    bool isLocked = false;
    /// Some services do not know what is in a collection that is locked.
    bool hidesLockedItems = false;
    bool hasCollection = true;

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString& path) const override;

private:
    static constexpr int kAlways = 1'000'000;

    struct Misbehaviour {
        Fault fault;
        int times;
    };

    struct Prompt {
        QString path;
        bool createsCollection;
    };

    bool misbehaves(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage openSession(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage search(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage secrets(const QDBusMessage& message) const;
    [[nodiscard]] QDBusMessage createItem(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage unlock(const QDBusMessage& message);
    [[nodiscard]] QString newPrompt(bool createsCollection);
    void complete(bool isDismissed);

    QHash<QString, Misbehaviour> m_faults;
    QStringList m_calls;
    int m_unanswered = 0;
    int m_lastId = 0;
    std::vector<QString> m_waitingPrompts;
    std::vector<Prompt> m_prompts;
};

} // namespace orvella
