#include "support/ProgramProcess.h"

#include <csignal>
#include <sys/types.h>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;

} // namespace

ProgramProcess::ProgramProcess(const QStringList& options, const Variables& variables)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : variables)
        environment.insert(name, value);
    m_process.setProcessEnvironment(environment);
    m_process.start(path(), options);
    if (!m_process.waitForStarted(kPatienceMs))
        qFatal("The program is not there.");
}

ProgramProcess::~ProgramProcess()
{
    m_process.kill();
    m_process.waitForFinished(kPatienceMs);
}

QString ProgramProcess::path()
{
    return QStringLiteral(ORVELLA_PROGRAM);
}

QStringList ProgramProcess::optionsFor(const QTemporaryDir& profile)
{
    // Nobody listens on the discard port.
    return {u"--profile"_s, profile.path(), u"--set"_s, u"apiBaseURL=http://127.0.0.1:9"_s};
}

void ProgramProcess::send(int signal)
{
    ::kill(static_cast<pid_t>(id()), signal);
}

int ProgramProcess::exitCode()
{
    if (isRunning() && !m_process.waitForFinished(kPatienceMs))
        return -1;
    return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
}

QString ProgramProcess::output()
{
    return QString::fromUtf8(m_process.readAllStandardOutput());
}

QString ProgramProcess::errors()
{
    return QString::fromUtf8(m_process.readAllStandardError());
}

} // namespace orvella
