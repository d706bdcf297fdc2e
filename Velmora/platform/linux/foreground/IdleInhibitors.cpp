#include "platform/linux/foreground/IdleInhibitors.h"

#include "platform/linux/bus/PromptCall.h"
#include "platform/linux/foreground/IdleInhibition.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>

#include <algorithm>
#include <utility>
#include <vector>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// Each object is asked three times, and a bus lets a program wait for 128 answers at least.
constexpr std::size_t kMostObjects = 32;
constexpr std::size_t kMostEntries = 256;

using Inhibitions = std::vector<IdleInhibition>;

/// Reads the first elements of an array of this D-Bus signature. Nothing where the answer is another.
template <class Element>
std::optional<std::vector<Element>> elements(const std::optional<QVariant>& answer, QLatin1StringView signature,
    std::size_t most, Element (*read)(const QDBusArgument&))
{
    if (!answer || answer->metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto list = answer->value<QDBusArgument>();
    if (list.currentSignature() != signature)
        return std::nullopt;
    std::vector<Element> found;
    list.beginArray();
    while (!list.atEnd() && found.size() < most)
        found.push_back(read(list));
    list.endArray();
    return found;
}

/// GNOME's session manager lists objects, each of which is asked for itself.
class GnomeInhibitors final {
public:
    explicit GnomeInhibitors(const QDBusConnection& bus)
        : m_bus(bus)
        , m_list(bus,
              QDBusMessage::createMethodCall(
                  kService, u"/org/gnome/SessionManager"_s, u"org.gnome.SessionManager"_s, u"GetInhibitors"_s))
    {
    }

    /// Waits for the list and asks each of its objects.
    void follow()
    {
        const auto paths = elements<QString>(m_list.value(), "ao"_L1, kMostObjects, [](const QDBusArgument& list) {
            QDBusObjectPath path;
            list >> path;
            return path.path();
        });
        m_isTold = paths.has_value();
        for (const auto& path : paths.value_or(std::vector<QString>()))
            m_inhibitors.push_back({ask(path, u"GetFlags"_s), ask(path, u"GetAppId"_s), ask(path, u"GetReason"_s)});
    }

    /// Nothing where the manager did not tell, or one of the objects did not.
    [[nodiscard]] std::optional<Inhibitions> answer()
    {
        constexpr uint kIdle = 8;
        Inhibitions inhibitions;
        for (auto& [flags, who, why] : m_inhibitors) {
            const auto kinds = flags.valueAs<uint>();
            m_isTold = m_isTold && kinds;
            if ((kinds.value_or(0) & kIdle) != 0)
                inhibitions.push_back(
                    {who.valueAs<QString>().value_or(QString()), why.valueAs<QString>().value_or(QString())});
        }
        return m_isTold || !inhibitions.empty() ? std::optional(inhibitions) : std::nullopt;
    }

private:
    static constexpr auto kService = "org.gnome.SessionManager"_L1;

    struct Inhibitor {
        PromptCall flags;
        PromptCall who;
        PromptCall why;
    };

    [[nodiscard]] PromptCall ask(const QString& path, const QString& method) const
    {
        return {m_bus, QDBusMessage::createMethodCall(kService, path, u"org.gnome.SessionManager.Inhibitor"_s, method)};
    }

    QDBusConnection m_bus;
    PromptCall m_list;
    std::vector<Inhibitor> m_inhibitors;
    bool m_isTold = false;
};

/// The policy agent of KDE Plasma lists those that keep the computer from suspending, too, and does not tell which are
/// which; so it is asked whether there is one for the screen.
class PlasmaInhibitors final {
public:
    explicit PlasmaInhibitors(const QDBusConnection& bus)
        : m_list(bus, question(u"ListInhibitions"_s))
        , m_isForScreen(bus, question(u"HasInhibition"_s) << kChangeScreenSettings)
    {
    }

    [[nodiscard]] std::optional<Inhibitions> answer()
    {
        const auto list = m_list.value();
        // Plasma 5 answers with structures, Plasma 6 with lists of two texts.
        auto inhibitions = elements<IdleInhibition>(list, "a(ss)"_L1, kMostEntries, [](const QDBusArgument& entries) {
            IdleInhibition inhibition;
            entries.beginStructure();
            entries >> inhibition.who >> inhibition.why;
            entries.endStructure();
            return inhibition;
        });
        if (!inhibitions)
            inhibitions = elements<IdleInhibition>(list, "aas"_L1, kMostEntries, [](const QDBusArgument& entries) {
                QStringList texts;
                entries >> texts;
                return IdleInhibition {texts.value(0), texts.value(1)};
            });
        const bool isForScreen = m_isForScreen.valueAs<bool>().value_or(true);
        return inhibitions && !isForScreen ? Inhibitions() : inhibitions;
    }

private:
    static constexpr uint kChangeScreenSettings = 4;

    static QDBusMessage question(const QString& method)
    {
        return QDBusMessage::createMethodCall(u"org.kde.Solid.PowerManagement.PolicyAgent"_s,
            u"/org/kde/Solid/PowerManagement/PolicyAgent"_s, u"org.kde.Solid.PowerManagement.PolicyAgent"_s, method);
    }

    PromptCall m_list;
    PromptCall m_isForScreen;
};

/// What the login manager knows of the whole computer.
class LoginInhibitors final {
public:
    explicit LoginInhibitors(const QDBusConnection& bus)
        : m_list(bus,
              QDBusMessage::createMethodCall(u"org.freedesktop.login1"_s, u"/org/freedesktop/login1"_s,
                  u"org.freedesktop.login1.Manager"_s, u"ListInhibitors"_s))
    {
    }

    [[nodiscard]] std::optional<Inhibitions> answer(uint user)
    {
        const auto all =
            elements<Entry>(m_list.value(), "a(ssssuu)"_L1, kMostEntries, [](const QDBusArgument& entries) {
                Entry entry;
                uint process = 0;
                entries.beginStructure();
                entries >> entry.what >> entry.inhibition.who >> entry.inhibition.why >> entry.mode >> entry.user
                    >> process;
                entries.endStructure();
                return entry;
            });
        if (!all)
            return std::nullopt;
        Inhibitions inhibitions;
        for (const auto& entry : *all) {
            const auto kinds = entry.what.split(u':');
            // Who wants no shutdown either is at work on something, as whatever runs under systemd-inhibit is.
            const bool isIdleOnly = kinds.contains(u"idle"_s) && !kinds.contains(u"shutdown"_s);
            if (isIdleOnly && entry.mode.startsWith(u"block") && entry.user == user)
                inhibitions.push_back(entry.inhibition);
        }
        return inhibitions;
    }

private:
    struct Entry {
        QString what;
        QString mode;
        uint user = 0;
        IdleInhibition inhibition;
    };

    PromptCall m_list;
};

} // namespace

IdleInhibitors::IdleInhibitors(QDBusConnection sessionBus, QDBusConnection systemBus, uint user)
    : m_sessionBus(std::move(sessionBus))
    , m_systemBus(std::move(systemBus))
    , m_user(user)
{
}

std::optional<bool> IdleInhibitors::isForViewing() const
{
    GnomeInhibitors gnome(m_sessionBus);
    PlasmaInhibitors plasma(m_sessionBus);
    LoginInhibitors login(m_systemBus);
    gnome.follow();

    std::optional<bool> isForViewing;
    for (const auto& answer : {plasma.answer(), login.answer(m_user), gnome.answer()}) {
        if (answer)
            isForViewing = isForViewing.value_or(false) || std::ranges::any_of(*answer, &IdleInhibition::isForViewing);
    }
    return isForViewing;
}

} // namespace orvella
