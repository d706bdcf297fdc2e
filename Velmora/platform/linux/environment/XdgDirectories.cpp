#include "platform/linux/environment/XdgDirectories.h"

#include <QDir>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isAbsolute(const QString& path)
{
    return path.startsWith(u'/');
}

QString folder(const QProcessEnvironment& environment, const QString& name, const QString& otherwise)
{
    const auto value = environment.value(name);
    return QDir::cleanPath(isAbsolute(value) ? value : otherwise);
}

QStringList dataFolders(const QProcessEnvironment& environment, const QString& dataHome)
{
    QStringList folders {dataHome};
    for (const auto& folder : environment.value(u"XDG_DATA_DIRS"_s).split(u':')) {
        if (isAbsolute(folder))
            folders.append(QDir::cleanPath(folder));
    }
    if (folders.size() == 1)
        folders += {u"/usr/local/share"_s, u"/usr/share"_s};
    return folders;
}

} // namespace

XdgDirectories::XdgDirectories(const QProcessEnvironment& environment, const std::optional<QString>& profile)
{
    const auto home = folder(environment, u"HOME"_s, QDir::homePath());
    const auto configHome = folder(environment, u"XDG_CONFIG_HOME"_s, home + u"/.config"_s);
    const auto stateHome = folder(environment, u"XDG_STATE_HOME"_s, home + u"/.local/state"_s);
    const auto dataHome = folder(environment, u"XDG_DATA_HOME"_s, home + u"/.local/share"_s);
    for (const auto& data : dataFolders(environment, dataHome)) {
        m_applications.append(data + u"/applications"_s);
        m_icons.append(data + u"/icons"_s);
    }

    const auto own =
        profile ? std::optional(QDir::cleanPath(QDir::current().absoluteFilePath(*profile))) : std::nullopt;
    m_config = own ? *own + u"/config"_s : configHome + u"/orvella"_s;
    m_state = own ? *own + u"/state"_s : stateHome + u"/orvella"_s;
    m_data = own ? *own + u"/data"_s : dataHome + u"/orvella"_s;
    m_autostart = own ? *own + u"/autostart"_s : configHome + u"/autostart"_s;
}

} // namespace orvella
