#include "platform/linux/LinuxSystemReport.h"

#include "platform/linux/environment/Flatpak.h"
#include "platform/linux/x11/X11Atom.h"
#include "platform/linux/x11/X11Display.h"
#include "platform/linux/x11/X11Reply.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QFileInfo>
#include <QGuiApplication>
#include <QStringList>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <utility>
#include <xcb/xcb.h>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds kPatience(100);

/// A name that a desktop or a distribution gives itself: short, and of plain characters. Anything else may have got
/// there by accident and is not passed on.
QString plain(const QString& name)
{
    constexpr qsizetype kMost = 60;
    constexpr QStringView kOthers = u" .:;()/+-_";
    QString text;
    for (const auto character : name.left(kMost)) {
        const auto isPlain =
            character.unicode() < 0x80 && (character.isLetterOrNumber() || kOthers.contains(character));
        text += isPlain ? character : u'?';
    }
    return text.isEmpty() ? u"unknown"_s : text;
}

/// Whether somebody has the X server's selection for the trays of the screen (System Tray Protocol Specification).
bool hasXEmbedTray()
{
    const auto display = X11Display::current();
    if (!display)
        return false;
    const auto selection = x11Atom(display->connection, "_NET_SYSTEM_TRAY_S" + std::to_string(display->screen));
    const X11Reply<xcb_get_selection_owner_reply_t> answer(xcb_get_selection_owner_reply(
        display->connection, xcb_get_selection_owner(display->connection, selection), nullptr));
    return answer && answer->owner != XCB_WINDOW_NONE;
}

} // namespace

LinuxSystemReport::LinuxSystemReport(
    const QProcessEnvironment& environment, QDBusConnection sessionBus, QString updater)
    : m_environment(environment)
    , m_sessionBus(std::move(sessionBus))
    , m_updater(std::move(updater))
    , m_proxies(m_sessionBus, kPatience)
{
}

std::vector<SystemReport::Fact> LinuxSystemReport::facts() const
{
    return {
        {u"system"_s, plain(QSysInfo::prettyProductName())},
        {u"packaging"_s, packaging()},
        {u"updater"_s, QFileInfo::exists(m_updater) ? u"installed"_s : u"not installed"_s},
        {u"toolkit"_s, u"Qt "_s + QString::fromLatin1(qVersion())},
        {u"desktop"_s, harmless(u"XDG_CURRENT_DESKTOP"_s)},
        {u"session"_s, session()},
        {u"status area"_s, statusArea()},
        {u"proxies"_s, proxies()},
    };
}

QString LinuxSystemReport::packaging() const
{
    if (isInFlatpak(m_environment))
        return u"Flatpak"_s;
    return m_environment.contains(u"APPIMAGE"_s) ? u"AppImage"_s : u"the system's"_s;
}

QString LinuxSystemReport::session() const
{
    return u"%1, shown through %2"_s.arg(harmless(u"XDG_SESSION_TYPE"_s), plain(QGuiApplication::platformName()));
}

QString LinuxSystemReport::statusArea() const
{
    if (!m_sessionBus.isConnected())
        return hasXEmbedTray() ? u"XEmbed; there is no session bus"_s : u"none; there is no session bus"_s;
    if (hasStatusNotifierHost())
        return u"StatusNotifierItem"_s;
    return hasXEmbedTray() ? u"XEmbed"_s : u"none"_s;
}

bool LinuxSystemReport::hasStatusNotifierHost() const
{
    auto question = QDBusMessage::createMethodCall(u"org.kde.StatusNotifierWatcher"_s, u"/StatusNotifierWatcher"_s,
        u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.kde.StatusNotifierWatcher"_s << u"IsStatusNotifierHostRegistered"_s;
    question.setAutoStartService(false);
    const auto answer = m_sessionBus.call(question, QDBus::Block, static_cast<int>(kPatience.count())).arguments();
    return !answer.isEmpty() && answer.constFirst().value<QDBusVariant>().variant().toBool();
}

/// The variables that libcurl reads, what the desktop wants for an address out there, and the kinds of the proxies.
/// Their addresses may hold names and passwords.
QString LinuxSystemReport::proxies() const
{
    constexpr std::array kVariables {"http_proxy", "https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"};
    constexpr std::array kKinds {"http", "https", "socks4", "socks4a", "socks5", "socks5h"};
    QStringList found;
    for (const auto* const variable : kVariables) {
        const auto name = QString::fromLatin1(variable);
        const auto address = m_environment.value(name);
        if (address.isEmpty())
            continue;
        const auto scheme = address.section(u"://"_s, 0, 0).toLower();
        const auto isKnown = address.contains(u"://"_s)
            && std::ranges::any_of(kKinds, [&](const char* kind) { return scheme == QLatin1StringView(kind); });
        found.append(u"%1 (%2)"_s.arg(name, isKnown ? scheme : u"http"_s));
    }
    for (const auto* const variable : {"no_proxy", "NO_PROXY"}) {
        if (const auto name = QString::fromLatin1(variable); !m_environment.value(name).isEmpty())
            found.append(name);
    }
    if (const auto wanted = m_proxies.wantedFor(QUrl(u"https://example.com/"_s)))
        found.append(u"the desktop's (%1)"_s.arg(wanted->isEmpty() ? u"direct"_s : wanted->scheme()));
    return found.isEmpty() ? u"none"_s : found.join(u", "_s);
}

QString LinuxSystemReport::harmless(const QString& variable) const
{
    return plain(m_environment.value(variable));
}

} // namespace orvella
