#include "platform/linux/X11RunningApplications.h"

#include "platform/linux/LocaleName.h"
#include "platform/linux/X11Display.h"
#include "platform/linux/X11Windows.h"

#include <QGuiApplication>
#include <QSet>
#include <QWindow>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

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
    : m_isWaylandSession(isWaylandSession(environment))
    , m_locale(localeName(environment, LocaleCategory::messages))
    , m_entries(applicationFolders)
{
}

std::vector<RunningApplication> X11RunningApplications::list() const
{
    const auto display = X11Display::current();
    if (m_isWaylandSession || !display)
        return {};
    m_entries.refresh();
    const auto own = ownWindows();
    std::vector<RunningApplication> applications;
    QSet<QString> seen;
    for (const auto& window : X11Windows::list(*display)) {
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
