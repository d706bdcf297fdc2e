#include "platform/linux/LinuxDevice.h"

#include "base/Version.h"

#include <QFile>
#include <QFileInfo>
#include <QSysInfo>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

QString contentOf(const QString& path)
{
    constexpr qint64 kMost = 1 << 16;
    QFile file(path);
    return QFileInfo(path).isFile() && file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(kMost)) : QString();
}

/// A value of a file of shell-like assignments: bare, or in single or double quotes.
QString unquoted(QStringView value)
{
    const auto isQuoted =
        value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') && value.back() == value.front();
    if (!isQuoted)
        return value.toString();
    const auto hasEscapes = value.front() == u'"';
    value = value.sliced(1, value.size() - 2);
    QString text;
    for (qsizetype at = 0; at < value.size(); ++at) {
        if (hasEscapes && value[at] == u'\\' && at + 1 < value.size())
            ++at;
        text += value[at];
    }
    return text;
}

QString prettyName(const QString& machineInfo)
{
    QString name;
    for (const auto line : QStringView(machineInfo).split(u'\n')) {
        const auto assignment = line.trimmed();
        // As in a shell, the last assignment counts.
        if (assignment.startsWith(u"PRETTY_HOSTNAME="))
            name = unquoted(assignment.sliced(assignment.indexOf(u'=') + 1)).trimmed();
    }
    return name;
}

QString staticName(const QString& hostname)
{
    for (const auto line : QStringView(hostname).split(u'\n')) {
        const auto name = line.trimmed();
        if (!name.isEmpty() && !name.startsWith(u'#'))
            return name.toString();
    }
    return {};
}

} // namespace

LinuxDevice::LinuxDevice(QString root)
    : m_root(std::move(root))
{
}

std::optional<QString> LinuxDevice::name() const
{
    for (const auto& name : {prettyName(contentOf(m_root + u"/etc/machine-info"_s)),
             staticName(contentOf(m_root + u"/etc/hostname"_s)), QSysInfo::machineHostName()}) {
        if (!name.isEmpty())
            return name;
    }
    return std::nullopt;
}

std::optional<QString> LinuxDevice::applicationVersion() const
{
    return kVersion;
}

} // namespace orvella
