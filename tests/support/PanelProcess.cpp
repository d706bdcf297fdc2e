#include "support/PanelProcess.h"

#include <QDir>

namespace orvella {

namespace {

constexpr int kPatienceMs = 30'000;

} // namespace

PanelProcess::PanelProcess(const QString& program)
{
    m_process.setProgram(program);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(QDir::home().filePath(program + QStringLiteral(".log")), QIODevice::Append);
}

PanelProcess::~PanelProcess()
{
    stop();
}

bool PanelProcess::start()
{
    m_process.start();
    return m_process.waitForStarted(kPatienceMs);
}

void PanelProcess::stop()
{
    m_process.terminate();
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kPatienceMs)) {
        m_process.kill();
        m_process.waitForFinished(kPatienceMs);
    }
}

} // namespace orvella
