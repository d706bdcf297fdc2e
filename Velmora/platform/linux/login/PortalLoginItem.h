#pragma once

#include "platform/LoginItem.h"

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace orvella {

class PortalRequest;

/// In a sandbox, where the session's own entries cannot be reached: the desktop's portal is asked, and may ask the
/// viewer (org.freedesktop.portal.Background).
///
/// The portal tells nobody what is set, so its last answer is kept in a file.
class PortalLoginItem final : public QObject, public LoginItem {
    Q_OBJECT

public:
    /// `command` is what the session starts within the sandbox. `file` keeps the answer.
    PortalLoginItem(QDBusConnection bus, QStringList command, QString file);

    /// Asks and does not wait. A question that is still open is taken back for a newer one.
    Result<void> registerItem() override;
    Result<void> unregisterItem() override;

    /// What the portal said last: `requiresApproval` where it was asked and has refused.
    [[nodiscard]] Status status() const override { return m_status; }

    void watch(std::function<void(const Result<void>&)> answered) override { m_answered = std::move(answered); }

private:
    enum class Wish { start, stay };

    Result<void> ask(Wish wish);
    void take(Wish wish, uint response, const QVariantMap& results);
    void keep(Status status);
    void close();
    void tell(const Result<void>& outcome);

    QDBusConnection m_bus;
    QStringList m_command;
    QString m_file;
    Status m_status;
    PortalRequest* m_request = nullptr;
    std::function<void(const Result<void>&)> m_answered;
};

} // namespace orvella
