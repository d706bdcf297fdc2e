#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace orvella {

/// A real service of the test's own, on a free port of the loopback, with everything in memory.
class SandboxProcess final {
public:
    explicit SandboxProcess(const QStringList& options = {});
    SandboxProcess(const SandboxProcess&) = delete;
    SandboxProcess& operator=(const SandboxProcess&) = delete;
    ~SandboxProcess();

    /// Where it listens, for example "http://127.0.0.1:43210"; empty where it did not start.
    [[nodiscard]] const QString& address() const { return m_address; }

    /// What it has said since its address.
    [[nodiscard]] QStringList lines();

    /// The code of the device that registered last; empty where none has.
    [[nodiscard]] QString activationCode();

    /// What a browser gets to see.
    [[nodiscard]] QString page(const QString& path);
    /// Sends the activation form as a browser does; the page that follows.
    QString activate(const QString& code);

private:
    QProcess m_process;
    QString m_address;
    QStringList m_lines;
};

} // namespace orvella
