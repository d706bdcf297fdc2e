#include "platform/linux/X11RunningApplications.h"

#include "platform/linux/LocaleName.h"
#include "platform/linux/X11Windows.h"

#include <QGuiApplication>
#include <QSet>
#include <QWindow>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<X11Windows::Window> windowsOfSession()
{
    const auto* const x11 =
        qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    // Qt's platform without a display has this interface too, but no connection behind it.
    auto* const connection = x11 != nullptr ? x11->connection() : nullptr;
    return connection != nullptr ? X11Windows::list(connection) : std::vector<X11Windows::Window>();
}

QSet<quint32> ownWindows()
{
    QSet<quint32> ids;
    const auto windows = QGuiApplication::allWindows();
    for (auto* const window : windows) {
        if (window->handle() != nullptr)
            ids.insert(static_cast<quint32>(window->winId()));
    }
    return ids;
}

std::optional<QString> unlessEmpty(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace

X11RunningApplications::X11RunningApplications(
    const QProcessEnvironment& environment, const QStringList& applicationFolders)
    : m_isWaylandSession(environment.value(u"XDG_SESSION_TYPE"_s) == u"wayland"_s
          || !environment.value(u"WAYLAND_DISPLAY"_s).isEmpty())
    , m_locale(localeName(environment, LocaleCategory::messages))
    , m_entries(applicationFolders)
{
}

std::vector<RunningApplication> X11RunningApplications::list() const
{
    if (m_isWaylandSession)
        return {};
    m_entries.refresh();
    const auto own = ownWindows();
    std::vector<RunningApplication> applications;
    QSet<QString> seen;
    for (const auto& window : windowsOfSession()) {
        if (!window.isRegular || own.contains(window.id))
            continue;
        RunningApplication application;
        if (const auto* const found = m_entries.find(window.instance, window.windowClass)) {
            application.identifier = found->id;
            application.name = found->entry.localized(u"Name"_s, m_locale);
        } else {
            application.identifier = unlessEmpty(window.windowClass);
            application.name = application.identifier;
        }
        // A window without a class cannot be told to be another one's: it counts for itself.
        if (application.identifier && seen.contains(*application.identifier))
            continue;
        seen.insert(application.identifier.value_or(QString()));
        applications.push_back(std::move(application));
    }
    return applications;
}

} // namespace orvella
