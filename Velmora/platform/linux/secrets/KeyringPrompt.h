#pragma once

#include "platform/linux/secrets/FromKeyring.h"
#include "platform/linux/secrets/SharedWait.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>

namespace orvella {

/// Listens for the end of one prompt of the Secret Service, from before it is shown.
class KeyringPrompt final : public QObject {
    Q_OBJECT

public:
    /// `owner` is the unique bus name of the service, `path` that of the prompt.
    KeyringPrompt(QDBusConnection bus, const QString& owner, const QString& path);
    /// Listens no more. The prompt itself stays.
    ~KeyringPrompt() override;

    /// Waits in a coroutine for the viewer, or for the service to go away.
    [[nodiscard]] SharedWait::Wait wait(std::stop_token stop) { return m_over.wait(std::move(stop)); }

    /// Afterwards: nothing wrong where the viewer agreed.
    [[nodiscard]] FromKeyring<> answer() const { return m_answer; }

private Q_SLOTS:
    void completed(const QDBusMessage& message);
    void busClosed();

private:
    void end(FromKeyring<> answer);

    QDBusServiceWatcher m_owners;
    FromKeyring<> m_answer = KeyringTrouble::stopped;
    SharedWait m_over;
};

} // namespace orvella
