#include "support/ControlGroupTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

ControlGroupTree::ControlGroupTree(const QString& own)
{
    write(processes() + u"/self/cgroup"_s, "0::" + own.toUtf8() + '\n');
}

void ControlGroupTree::add(const QString& path, bool isPopulated) const
{
    write(manager() + u'/' + path + u"/cgroup.events"_s,
        isPopulated ? "populated 1\nfrozen 0\n" : "populated 0\nfrozen 0\n");
}

QString ControlGroupTree::manager() const
{
    return groups() + u"/user.slice/user-1000.slice/user@1000.service"_s;
}

void ControlGroupTree::write(const QString& path, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("A file of the test cannot be written.");
}

} // namespace orvella
