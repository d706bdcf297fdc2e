#pragma once

#include "platform/linux/files/DesktopEntry.h"

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>

namespace orvella {

/// The desktop entries of the installed applications, found by their IDs or by the class of a window.
class DesktopEntries final {
public:
    struct Application {
        /// The desktop file ID without ".desktop".
        QString id;
        DesktopEntry entry;
    };

    /// `folders` are the "applications" folders, the most important first.
    explicit DesktopEntries(QStringList folders);

    /// The application of windows with this WM_CLASS: the one whose entry names the instance or the class as its
    /// StartupWMClass, else the one whose ID is the instance or the class, in any case of letters.
    [[nodiscard]] const Application* find(const QString& instance, const QString& windowClass);

    /// The application with this desktop file ID, without ".desktop", in any case of letters.
    [[nodiscard]] const Application* findById(const QString& id);

    /// Reads the folders again where an entry was added or removed since.
    void refresh();

private:
    void readFolder(const QString& folder);

    QStringList m_folders;
    std::map<QString, QDateTime> m_modified;
    std::map<QString, Application> m_byId;
    std::map<QString, QString> m_idByWindowClass;
};

} // namespace orvella
