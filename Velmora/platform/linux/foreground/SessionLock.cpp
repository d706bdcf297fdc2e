#include "platform/linux/foreground/SessionLock.h"

#include "platform/linux/bus/PromptCall.h"

#include <QDBusMessage>

#include <array>
#include <utility>
#include <vector>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

struct ScreenSaver {
    QLatin1StringView service;
    QLatin1StringView path;
};

/// The interface has the name of the service.
constexpr std::array kScreenSavers {
    ScreenSaver {"org.freedesktop.ScreenSaver"_L1, "/org/freedesktop/ScreenSaver"_L1},
    ScreenSaver {"org.gnome.ScreenSaver"_L1, "/org/gnome/ScreenSaver"_L1},
    ScreenSaver {"org.cinnamon.ScreenSaver"_L1, "/org/cinnamon/ScreenSaver"_L1},
    ScreenSaver {"org.mate.ScreenSaver"_L1, "/org/mate/ScreenSaver"_L1},
    ScreenSaver {"org.xfce.ScreenSaver"_L1, "/org/xfce/ScreenSaver"_L1},
};

/// The object of a session. Whatever is no letter or digit is escaped, and so is a digit at the beginning.
QString pathOf(const QString& sessionId)
{
    if (sessionId.isEmpty())
        return u"/org/freedesktop/login1/session/auto"_s;
    auto path = u"/org/freedesktop/login1/session/"_s;
    const auto bytes = sessionId.toUtf8();
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        const char byte = bytes[i];
        const bool isLetter = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z');
        const bool isDigit = byte >= '0' && byte <= '9';
        if (isLetter || (isDigit && i > 0))
            path += QLatin1Char(byte);
        else
            path += u'_' + QString::fromLatin1(bytes.mid(i, 1).toHex());
    }
    return path;
}

} // namespace

SessionLock::SessionLock(QDBusConnection sessionBus, QDBusConnection systemBus, const QString& sessionId)
    : m_sessionBus(std::move(sessionBus))
    , m_systemBus(std::move(systemBus))
    , m_sessionPath(pathOf(sessionId))
{
}

std::optional<bool> SessionLock::isLocked() const
{
    std::vector<PromptCall> calls;
    auto question = QDBusMessage::createMethodCall(
        u"org.freedesktop.login1"_s, m_sessionPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << u"org.freedesktop.login1.Session"_s << u"LockedHint"_s;
    calls.emplace_back(m_systemBus, question);
    for (const auto& [service, path] : kScreenSavers)
        calls.emplace_back(m_sessionBus, QDBusMessage::createMethodCall(service, path, service, u"GetActive"_s));

    std::optional<bool> isLocked;
    for (auto& call : calls) {
        if (const auto answer = call.valueAs<bool>())
            isLocked = isLocked.value_or(false) || *answer;
    }
    return isLocked;
}

} // namespace orvella
