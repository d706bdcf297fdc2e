#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>

namespace orvella {

/// A session bus besides the test's own: a real dbus-daemon. It ends with this.
class PrivateBus final {
public:
    /// What may be done on it, as elements of a bus configuration.
    explicit PrivateBus(const QByteArray& rules = "<policy context='default'><allow own='*'/></policy>");
    PrivateBus(const PrivateBus&) = delete;
    PrivateBus& operator=(const PrivateBus&) = delete;
    ~PrivateBus();

    [[nodiscard]] const QString& address() const { return m_address; }

    /// Has it start this command line for the name from now on.
    void addService(const QString& name, const QString& commandLine);

    void kill();
    /// Has it hang: it keeps its connections and answers nothing until it is resumed.
    void suspend();
    void resume();

private:
    void send(int signal);

    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
};

} // namespace orvella
