#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QVariantList>
#include <QVariantMap>

namespace orvella {

/// One question to the desktop's portal that the viewer may have to be asked for: the answer comes as a signal of an
/// object that is there for this question only (org.freedesktop.portal.Request). It may take as long as the viewer
/// likes.
///
/// Exactly one of the two signals is emitted, once, and never from within the constructor.
class PortalRequest final : public QObject {
    Q_OBJECT

public:
    struct Question {
        QString interface;
        QString method;
        /// All but the last argument, which are the options.
        QVariantList arguments;
        QVariantMap options;
    };

    PortalRequest(QDBusConnection bus, const Question& question);

    /// Takes the question back; nothing is emitted any more.
    void close();

Q_SIGNALS:
    /// What the portal's signal says: 0 for done, 1 for refused by the viewer, else for another end.
    void answered(uint response, const QVariantMap& results);
    /// There is no portal, it does not know the question, or it has ended before the answer.
    void failed();

private Q_SLOTS:
    void responded(uint response, const QVariantMap& results);

private:
    void follow(const QString& path);
    void ask(const Question& question, const QString& token);
    /// Whether this is the first end.
    [[nodiscard]] bool end();

    QDBusConnection m_bus;
    QDBusServiceWatcher m_owners;
    QString m_path;
    bool m_hasEnded = false;
};

} // namespace orvella
