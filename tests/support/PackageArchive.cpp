#include "support/PackageArchive.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTextStream>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

void write(const QString& path, const QString& content)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly))
        qFatal("A file of the archive cannot be written.");
    file.write(content.toUtf8());
}

QByteArray read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// What it prints.
QString run(const QString& program, const QStringList& arguments, const QByteArray& input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
        qFatal("%s does not end.", qPrintable(program));
    if (process.exitCode() != 0)
        qFatal("%s: %s", qPrintable(program), process.readAllStandardError().constData());
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString controlFile(const PackageArchive::Package& package)
{
    return u"Package: %1\nVersion: %2\nArchitecture: all\nMaintainer: Nobody <nobody@orvella.example>\n%3"
           "Description: a package of the tests\n"_s.arg(package.name, package.version, package.fields);
}

} // namespace

PackageArchive::PackageArchive()
{
    for (const auto& folder : {u"root/var/lib/dpkg/info"_s, u"root/var/lib/dpkg/updates"_s, u"source"_s,
             u"lists/partial"_s, u"cache/archives/partial"_s, u"etc/apt.conf.d"_s, u"etc/preferences.d"_s,
             u"etc/sources.list.d"_s, u"etc/trusted.gpg.d"_s, u"log"_s, u"state"_s})
        QDir().mkpath(m_folder.filePath(folder));
    write(m_folder.filePath(u"root/var/lib/dpkg/status"_s), {});
    write(m_folder.filePath(u"source/Packages"_s), {});
    write(m_folder.filePath(u"etc/sources.list"_s),
        u"deb [trusted=yes] file:%1 ./\n"_s.arg(m_folder.filePath(u"source"_s)));
    writeConfiguration();
}

void PackageArchive::install(const Package& package)
{
    run(u"dpkg"_s, dpkgOptions() + QStringList {u"--install"_s, build(package, m_folder.path())});
}

void PackageArchive::publish(const Package& package)
{
    const auto path = build(package, m_folder.filePath(u"source"_s));
    const auto content = read(path);
    m_index += controlFile(package)
        + u"Filename: ./%1\nSize: %2\nSHA256: %3\n\n"_s.arg(QFileInfo(path).fileName())
              .arg(content.size())
              .arg(QString::fromLatin1(QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex()));
    write(m_folder.filePath(u"source/Packages"_s), m_index);
}

void PackageArchive::hold(const QString& name)
{
    run(u"dpkg"_s, dpkgOptions() + QStringList {u"--set-selections"_s}, name.toUtf8() + " hold\n");
}

QString PackageArchive::installedVersion(const QString& name) const
{
    const auto all = run(u"dpkg-query"_s,
        {u"--root="_s + m_folder.filePath(u"root"_s), u"--show"_s,
            u"--showformat=${Package} ${db:Status-Status} ${Version}\\n"_s});
    const auto lines = all.split(u'\n').filter(name + u" installed "_s);
    return lines.isEmpty() ? QString() : lines.constFirst().section(u' ', 2);
}

QString PackageArchive::installedFile(const QString& name) const
{
    return QString::fromUtf8(read(m_folder.filePath(u"root/usr/share/%1/version"_s.arg(name))));
}

QString PackageArchive::build(const Package& package, const QString& folder) const
{
    const auto tree = m_folder.filePath(u"tree/"_s + package.name + u'_' + package.version);
    write(tree + u"/DEBIAN/control"_s, controlFile(package));
    write(tree + u"/usr/share/%1/version"_s.arg(package.name), package.version);
    const auto path = folder + u'/' + package.name + u'_' + QString(package.version).replace(u':', u'.') + u".deb"_s;
    run(u"dpkg-deb"_s, {u"--root-owner-group"_s, u"--build"_s, tree, path});
    return path;
}

void PackageArchive::writeConfiguration() const
{
    QString content;
    QTextStream text(&content);
    const auto place = [&](QLatin1StringView option, QLatin1StringView path) {
        text << option << " \"" << m_folder.filePath(path) << "\";\n";
    };
    place("Dir::State"_L1, "state"_L1);
    place("Dir::State::lists"_L1, "lists"_L1);
    place("Dir::State::status"_L1, "root/var/lib/dpkg/status"_L1);
    place("Dir::Cache"_L1, "cache"_L1);
    place("Dir::Log"_L1, "log"_L1);
    // Nothing of the machine's own configuration.
    place("Dir::Etc"_L1, "etc"_L1);
    place("Dir::Etc::main"_L1, "etc/apt.conf"_L1);
    place("Dir::Etc::parts"_L1, "etc/apt.conf.d"_L1);
    // No other user could read the folder.
    text << "APT::Sandbox::User \"root\";\nDPkg::Options {\n";
    for (const auto& option : dpkgOptions())
        text << '"' << option << "\";\n";
    text << "};\n";
    text.flush();
    write(configuration(), content);
}

QStringList PackageArchive::dpkgOptions() const
{
    return {u"--root="_s + m_folder.filePath(u"root"_s), u"--log="_s + m_folder.filePath(u"log/dpkg.log"_s),
        u"--force-not-root"_s, u"--force-script-chrootless"_s};
}

} // namespace orvella
