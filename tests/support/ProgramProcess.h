#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <map>

namespace orvella {

/// The program as it is installed, in a process of its own. Nothing is left of it when this goes.
class ProgramProcess final {
public:
    using Variables = std::map<QString, QString>;

    explicit ProgramProcess(const QStringList& options, const Variables& variables = {});
    ProgramProcess(const ProgramProcess&) = delete;
    ProgramProcess& operator=(const ProgramProcess&) = delete;
    ~ProgramProcess();

    /// The program's absolute path.
    [[nodiscard]] static QString path();
    /// Options with which it finds no service and leaves the viewer's places alone.
    [[nodiscard]] static QStringList optionsFor(const QTemporaryDir& profile);

    [[nodiscard]] qint64 id() const { return m_process.processId(); }

    [[nodiscard]] bool isRunning() const { return m_process.state() != QProcess::NotRunning; }

    void send(int signal);
    /// The exit code; -1 where it was killed or does not end.
    [[nodiscard]] int exitCode();
    [[nodiscard]] QString output();
    [[nodiscard]] QString errors();

private:
    QProcess m_process;
};

} // namespace orvella
