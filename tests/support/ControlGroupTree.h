#pragma once

#include <QString>
#include <QTemporaryDir>

namespace orvella {

/// Files as the system shows the control groups of a session that systemd's user manager has started.
class ControlGroupTree final {
public:
    /// `own` is the group of the program itself.
    explicit ControlGroupTree(const QString& own = QStringLiteral(
                                  "/user.slice/user-1000.slice/user@1000.service/app.slice/app-orvella-77.scope"));

    /// Adds a unit; `path` starts at the user manager's group.
    void add(const QString& path, bool isPopulated = true) const;

    [[nodiscard]] QString processes() const { return m_folder.filePath(QStringLiteral("proc")); }
    [[nodiscard]] QString groups() const { return m_folder.filePath(QStringLiteral("groups")); }
    /// The folder of the user manager's group.
    [[nodiscard]] QString manager() const;

    /// Writes a file, and the folders it is in.
    static void write(const QString& path, const QByteArray& content);

private:
    QTemporaryDir m_folder;
};

} // namespace orvella
