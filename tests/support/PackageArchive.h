#pragma once

#include <QDir>
#include <QString>
#include <QTemporaryDir>

namespace orvella {

/// A system of packages of the test's own: a folder that stands for the root of the file system, APT's configuration
/// for it, and a source of packages in another folder. The machine's packages are not part of it.
class PackageArchive final {
public:
    struct Package {
        QString name;
        QString version;
        /// More fields of its control file, each a whole line.
        QString fields {};
    };

    PackageArchive();

    /// The file that APT_CONFIG has to name.
    [[nodiscard]] QString configuration() const { return m_folder.filePath(QStringLiteral("apt.conf")); }

    /// Installs it with dpkg.
    void install(const Package& package);
    /// Puts it into the source, where APT sees it once it has renewed its lists.
    void publish(const Package& package);
    /// Has the package kept as it is.
    void hold(const QString& name);

    /// What is installed; empty where it is not.
    [[nodiscard]] QString installedVersion(const QString& name) const;
    /// What the installed package has put into the root.
    [[nodiscard]] QString installedFile(const QString& name) const;

private:
    [[nodiscard]] QString build(const Package& package, const QString& folder) const;
    void writeConfiguration() const;
    [[nodiscard]] QStringList dpkgOptions() const;

    QTemporaryDir m_folder;
    QString m_index;
};

} // namespace orvella
