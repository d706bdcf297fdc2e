#pragma once

#include <QDBusConnection>
#include <QDBusVirtualObject>

#include <memory>
#include <vector>

struct _GcrSecretExchange;

namespace orvella {

/// Stands in for the password window of gnome-keyring: the daemon asks it, and the test answers.
class ScriptedPrompter final : public QDBusVirtualObject {
    Q_OBJECT

public:
    ScriptedPrompter();
    ~ScriptedPrompter() override;

    /// How many windows would have been shown.
    [[nodiscard]] int shown() const { return m_shown; }

    /// How many of them are up now.
    [[nodiscard]] int up() const { return static_cast<int>(m_open.size()); }

    void enter(const char* password);
    void dismiss();

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    QString introspect(const QString& path) const override;

private:
    /// Where the daemon waits for the password, and the key that it travels under.
    struct Prompt {
        QString client;
        QString callback;
        std::shared_ptr<_GcrSecretExchange> exchange;
    };

    void answer(const QString& reply, const char* password);
    void ready(const Prompt& prompt, const QString& reply, const QString& exchange);
    Prompt take();

    QDBusConnection m_bus;
    int m_shown = 0;
    std::vector<Prompt> m_open;
};

} // namespace orvella
