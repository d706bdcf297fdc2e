#include "support/TracedProcess.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <csignal>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Whatever changes files, opens them or sees to it that they are on the disk.
const auto kFollowed =
    u"trace=open,openat,openat2,creat,close,dup,dup2,dup3,write,pwrite64,writev,pwritev,pwritev2,sendfile,"
    "copy_file_range,splice,fallocate,ftruncate,truncate,fsync,fdatasync,sync,syncfs,sync_file_range,rename,renameat,"
    "renameat2,link,linkat,symlink,symlinkat,mkdir,mkdirat,rmdir,unlink,unlinkat,chmod,fchmod,fchmodat"_s;

/// strace writes each byte as \x61.
QByteArray unquoted(const QByteArray& argument)
{
    if (!argument.startsWith('"') || !argument.endsWith('"'))
        return argument;
    return QByteArray::fromHex(argument.sliced(1, argument.size() - 2).replace("\\x", ""));
}

} // namespace

TracedProcess::TracedProcess(const QStringList& command, const QStringList& options)
{
    const QTemporaryDir folder;
    const auto record = folder.filePath(u"calls"_s);
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    // The leak sanitizer follows the program itself, and two cannot.
    environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":detect_leaks=0"_s);
    process.setProcessEnvironment(environment);
    process.start(u"strace"_s,
        QStringList {
            u"-qq"_s, u"-xx"_s, u"-s"_s, u"1000000"_s, u"-o"_s, record, u"-e"_s, u"signal=none"_s, u"-e"_s, kFollowed}
            + options + command);
    if (!process.waitForStarted() || !process.waitForFinished()) {
        m_trouble = "strace cannot be started, or does not end: " + process.errorString().toLocal8Bit();
        return;
    }
    // strace dies of what its program died of.
    m_wasKilled = process.exitStatus() == QProcess::CrashExit && process.exitCode() == SIGKILL;
    m_lines = process.readAllStandardOutput().split('\n');
    m_lines.removeLast();
    const auto errors = process.readAllStandardError();
    QFile file(record);
    if (file.open(QIODevice::ReadOnly))
        readCalls(file.readAll());
    if ((!m_wasKilled && process.exitCode() != 0) || !errors.isEmpty() || m_calls.empty())
        m_trouble = "strace could not follow the program; is tracing allowed on this machine? It says: " + errors;
}

void TracedProcess::readCalls(const QByteArray& record)
{
    static const QRegularExpression form(u"^(\\w+)\\((.*)\\)\\s+= (-?\\d+|\\?)"_s);
    for (const auto& line : record.split('\n')) {
        const auto found = form.match(QString::fromLatin1(line));
        if (!found.hasMatch())
            continue;
        TracedCall call {found.captured(1).toLatin1(), {}, 0};
        for (const auto& argument : found.captured(2).toLatin1().split(','))
            call.arguments.append(unquoted(argument.trimmed()));
        const auto result = found.captured(3);
        call.result = result == u"?" ? -1 : result.toLongLong();
        m_calls.push_back(std::move(call));
    }
}

} // namespace orvella
