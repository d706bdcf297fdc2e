#include "platform/linux/applications/LinuxRunningApplications.h"

#include "base/ApplicationId.h"
#include "platform/linux/environment/Flatpak.h"
#include "platform/linux/environment/LocaleName.h"
#include "platform/linux/x11/X11Display.h"

#include <QGuiApplication>
#include <QSet>
#include <QWindow>

#include <algorithm>
#include <array>
#include <utility>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Parts of a desktop that menus show as applications.
constexpr std::array kPartsOfDesktops {"cairo-dock"_L1, "cairo-dock-cairo"_L1, "conky"_L1, "net.launchpad.plank"_L1,
    "org.kde.latte-dock"_L1, "plank"_L1, "tint2"_L1};

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

/// The windows of other programs that are applications of their own.
std::vector<X11Windows::Window> applicationWindows()
{
    const auto display = X11Display::current();
    if (!display)
        return {};
    auto windows = X11Windows::list(*display);
    std::erase_if(windows, [own = ownWindows()](const X11Windows::Window& window) {
        return !window.isRegular || own.contains(window.id);
    });
    return windows;
}

std::optional<QString> unlessEmpty(const QString& text)
{
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

bool isPartOfDesktop(const DesktopEntries::Application& application)
{
    return std::ranges::find(kPartsOfDesktops, application.id.toLower()) != kPartsOfDesktops.end();
}

/// Whether what runs under this entry is an application that people know. What menus leave out is a helper or a part
/// of the desktop, and what runs in a terminal has no windows of its own: the terminal is the application.
bool isShownToPeople(const DesktopEntries::Application& application)
{
    const auto& entry = application.entry;
    const auto is = [&entry](const QString& key) { return entry.boolean(key).value_or(false); };
    return entry.string(u"Type"_s) == u"Application"_s && !is(u"NoDisplay"_s) && !is(u"Hidden"_s) && !is(u"Terminal"_s)
        && !isPartOfDesktop(application);
}

/// Whether a window that no entry names may be the application's: the window's class is the last part of the
/// application's ID, or the program that the entry starts.
bool resembles(const DesktopEntries::Application& application, const X11Windows::Window& window)
{
    const auto program = application.entry.string(u"Exec"_s).value_or(QString()).section(u' ', 0, 0);
    for (const auto& name : {application.id.section(u'.', -1), program.section(u'/', -1)}) {
        const auto isName = [&name](const QString& text) { return name.compare(text, Qt::CaseInsensitive) == 0; };
        if (!name.isEmpty() && (isName(window.instance) || isName(window.windowClass)))
            return true;
    }
    return false;
}

} // namespace

LinuxRunningApplications::LinuxRunningApplications(
    const QProcessEnvironment& environment, const QStringList& applicationFolders, ApplicationUnits units)
    : m_isInFlatpak(isInFlatpak(environment))
    , m_isWaylandSession(isWaylandSession(environment))
    , m_locale(localeName(environment, LocaleCategory::messages))
    , m_units(std::move(units))
    , m_entries(applicationFolders)
{
}

std::vector<RunningApplication> LinuxRunningApplications::list() const
{
    if (m_isInFlatpak)
        return {};
    m_entries.refresh();
    std::vector<RunningApplication> applications;
    QSet<QString> seen;
    const auto add = [&](RunningApplication application) {
        const auto id = application.identifier.value_or(QString()).toLower();
        // A window without a class cannot be told to be another one's: it counts for itself.
        if (!id.isEmpty() && (seen.contains(id) || id == kApplicationId.toString().toLower()))
            return;
        seen.insert(id);
        applications.push_back(std::move(application));
    };
    const auto ofUnits = applicationsOfUnits();
    for (const auto& window : m_isWaylandSession ? std::vector<X11Windows::Window>() : applicationWindows())
        add(described(window, ofUnits));
    for (const auto* const application : ofUnits)
        add(described(*application));
    return applications;
}

std::vector<const DesktopEntries::Application*> LinuxRunningApplications::applicationsOfUnits() const
{
    std::vector<const Application*> applications;
    for (const auto& ids : m_units.running()) {
        const Application* found = nullptr;
        for (auto id = ids.begin(); found == nullptr && id != ids.end(); ++id)
            found = m_entries.findById(*id);
        if (found != nullptr && isShownToPeople(*found))
            applications.push_back(found);
    }
    return applications;
}

RunningApplication LinuxRunningApplications::described(
    const X11Windows::Window& window, const std::vector<const Application*>& ofUnits) const
{
    const auto* found = m_entries.findById(window.applicationId);
    if (found == nullptr)
        found = m_entries.find(window.instance, window.windowClass);
    if (found != nullptr)
        return described(*found);
    const auto similar = std::ranges::find_if(
        ofUnits, [&window](const Application* application) { return resembles(*application, window); });
    if (similar != ofUnits.end())
        return described(**similar);
    RunningApplication application;
    application.identifier = unlessEmpty(window.windowClass);
    application.name = application.identifier;
    return application;
}

RunningApplication LinuxRunningApplications::described(const Application& application) const
{
    RunningApplication described;
    described.identifier = application.id;
    described.name = application.entry.localized(u"Name"_s, m_locale);
    return described;
}

} // namespace orvella
