#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QVariantMap>

namespace orvella {

/// The desktop's portal on the test's session bus, as far as it lets programs start at login.
class FakeBackgroundPortal final : public QDBusVirtualObject {
public:
    FakeBackgroundPortal();
    ~FakeBackgroundPortal() override;

    /// When the path of the request is told.
    enum class Reply { beforeTheAnswer, afterTheAnswer, never, refused };

    void start();
    /// Goes away, as a portal that ends or crashes.
    void stop();

    /// The options of each request so far.
    [[nodiscard]] const QList<QVariantMap>& requests() const { return m_requests; }

    /// The paths of the requests that were taken back.
    [[nodiscard]] const QStringList& closed() const { return m_closed; }

    /// The path of a request, the first one being 0.
    [[nodiscard]] QString path(qsizetype request) const;

    /// Ends a request: 0 for done, 1 for refused by the viewer, 2 for another end.
    void answer(qsizetype request, uint response, const QVariantMap& results);
    void answer(qsizetype request, uint response, bool autostart)
    {
        answer(request, response,
            QVariantMap {{QStringLiteral("background"), true}, {QStringLiteral("autostart"), autostart}});
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;
    [[nodiscard]] QString introspect(const QString& path) const override { return path; }

    Reply reply = Reply::beforeTheAnswer;
    /// Where requests are, as with portals that choose the path themselves; empty for the documented place.
    QString ownPath;

private:
    QString m_connectionName;
    QDBusConnection m_bus;
    QList<QVariantMap> m_requests;
    QList<QDBusMessage> m_calls;
    QStringList m_closed;
};

} // namespace orvella
