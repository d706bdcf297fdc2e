#include "platform/linux/applications/DesktopEntries.h"

#include <QDirIterator>
#include <QFileInfo>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

DesktopEntries::DesktopEntries(QStringList folders)
    : m_folders(std::move(folders))
{
}

const DesktopEntries::Application* DesktopEntries::find(const QString& instance, const QString& windowClass)
{
    for (const auto& name : {instance.toLower(), windowClass.toLower()}) {
        const auto id = m_idByWindowClass.find(name);
        if (id != m_idByWindowClass.end())
            return &m_byId.at(id->second);
    }
    const auto* const byInstance = findById(instance);
    return byInstance != nullptr ? byInstance : findById(windowClass);
}

const DesktopEntries::Application* DesktopEntries::findById(const QString& id)
{
    const auto application = m_byId.find(id.toLower());
    return application != m_byId.end() ? &application->second : nullptr;
}

void DesktopEntries::refresh()
{
    std::map<QString, QDateTime> modified;
    for (const auto& folder : std::as_const(m_folders)) {
        modified.insert_or_assign(folder, QFileInfo(folder).lastModified());
        QDirIterator subfolders(folder, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (subfolders.hasNext()) {
            const auto subfolder = subfolders.next();
            modified.insert_or_assign(subfolder, QFileInfo(subfolder).lastModified());
        }
    }
    if (modified == m_modified)
        return;
    m_modified = std::move(modified);
    m_byId.clear();
    m_idByWindowClass.clear();
    for (const auto& folder : std::as_const(m_folders))
        readFolder(folder);
}

void DesktopEntries::readFolder(const QString& folder)
{
    QDirIterator files(folder, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const auto path = files.next();
        auto id = path.sliced(folder.size() + 1);
        id.chop(u".desktop"_s.size());
        id.replace(u'/', u'-');
        auto entry = DesktopEntry::read(path);
        // An ID that a more important folder has hides this one.
        if (!entry || m_byId.contains(id.toLower()))
            continue;
        const auto windowClass = entry->string(u"StartupWMClass"_s);
        if (windowClass && !windowClass->isEmpty())
            m_idByWindowClass.try_emplace(windowClass->toLower(), id.toLower());
        m_byId.emplace(id.toLower(), Application {id, std::move(*entry)});
    }
}

} // namespace orvella
