#include "support/ProcessFacts.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace orvella::ProcessFacts {

using namespace Qt::StringLiterals;

namespace {

/// The fields of /proc/PID/stat that follow the name, which may itself have blanks and brackets in it.
QList<QByteArray> statistics(qint64 process)
{
    const auto line = file(process, u"stat"_s);
    return line.sliced(line.lastIndexOf(')') + 1).trimmed().split(' ');
}

} // namespace

std::chrono::milliseconds processorTime(qint64 process)
{
    constexpr int kUserTime = 11;
    constexpr int kSystemTime = 12;
    const auto fields = statistics(process);
    const auto ticks = fields.value(kUserTime).toLongLong() + fields.value(kSystemTime).toLongLong();
    return std::chrono::milliseconds(ticks * 1000 / sysconf(_SC_CLK_TCK));
}

QByteArray file(qint64 process, const QString& name)
{
    QFile content(u"/proc/%1/%2"_s.arg(process).arg(name));
    return content.open(QIODevice::ReadOnly) ? content.readAll() : QByteArray();
}

bool handles(qint64 process, int signal)
{
    const auto status = file(process, u"status"_s);
    const QByteArray name = "SigCgt:";
    const auto mask = status.sliced(status.indexOf(name) + name.size()).split('\n').constFirst().trimmed();
    return (mask.toULongLong(nullptr, 16) >> (signal - 1) & 1) != 0;
}

QList<qint64> descendants(qint64 process)
{
    QList<qint64> found;
    const auto threads = QDir(u"/proc/%1/task"_s.arg(process)).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const auto& thread : threads) {
        const auto children = file(process, u"task/%1/children"_s.arg(thread)).simplified().split(' ');
        for (const auto& child : children) {
            if (child.isEmpty())
                continue;
            found.append(child.toLongLong());
            found.append(descendants(found.constLast()));
        }
    }
    return found;
}

} // namespace orvella::ProcessFacts
