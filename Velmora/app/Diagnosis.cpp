#include "app/Diagnosis.h"

#include "app/AutoOpenGuard.h"
#include "app/RecentErrors.h"
#include "base/Version.h"
#include "platform/ForegroundFacts.h"
#include "platform/LoginItem.h"
#include "platform/SettingsStore.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

using Facts = std::vector<SystemReport::Fact>;

QString answer(std::optional<bool> fact)
{
    if (!fact)
        return u"unknown"_s;
    return *fact ? u"yes"_s : u"no"_s;
}

QString keyring(SecretStore::Finding finding)
{
    using Finding = SecretStore::Finding;
    switch (finding) {
    case Finding::item:
        return u"has the device's token"_s;
    case Finding::noItem:
        return u"has no token"_s;
    case Finding::locked:
        return u"is locked"_s;
    case Finding::refused:
        return u"is locked, and the viewer did not want to unlock it"_s;
    case Finding::absent:
        break;
    }
    return u"does not answer, or there is none"_s;
}

QString loginItem(LoginItem::Status status)
{
    using Status = LoginItem::Status;
    switch (status) {
    case Status::enabled:
        return u"on"_s;
    case Status::requiresApproval:
        return u"switched off by the desktop's own tools"_s;
    case Status::notFound:
        return u"on, but for a program that is gone"_s;
    case Status::notRegistered:
        break;
    }
    return u"off"_s;
}

/// As the guard sees it at this moment. Whose window it is stays here.
Facts guardFacts(const ForegroundFacts& facts)
{
    const auto windows = facts.windows();
    return {
        {u"screen locked"_s, answer(facts.isScreenLocked())},
        {u"front application"_s, facts.frontApplication() ? u"known"_s : u"none, or unknown"_s},
        {u"windows"_s, windows ? QString::number(windows->size()) : u"unknown"_s},
        {u"screens"_s, QString::number(facts.screens().size())},
        {u"kept awake for a video"_s, answer(facts.isKeptAwakeForViewing())},
        {u"screen covered"_s, answer(AutoOpenGuard::isScreenCovered(facts))},
        {u"an ad may open by itself"_s, answer(AutoOpenGuard::canOpenForegroundWindow(facts))},
    };
}

QString ago(Clock::duration past)
{
    const auto minutes = std::chrono::floor<std::chrono::minutes>(past).count();
    return u"%1 min ago"_s.arg(minutes);
}

Facts errorFacts(const RecentErrors& errors, Instant now)
{
    Facts facts;
    for (const auto& entry : errors.entries()) {
        const auto times = entry.times > 1 ? u", %1 times in a row"_s.arg(entry.times) : QString();
        facts.push_back({u"error, "_s + ago(now - entry.at) + times, entry.description});
    }
    if (facts.empty())
        facts.push_back({u"errors"_s, u"none"_s});
    return facts;
}

void append(Facts& facts, Facts more)
{
    facts.insert(facts.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

Facts factsOf(const Platform& platform, const QString& running)
{
    Facts facts {{u"Orvella"_s, QString(kVersion)}, {u"running"_s, running}};
    append(facts, platform.report.facts());
    const auto& settings = platform.settings;
    const auto isElsewhere = settings.string(u"apiBaseURL"_s).has_value();
    facts.push_back(
        {u"service"_s, isElsewhere ? u"another one, by the setting apiBaseURL"_s : u"the production one"_s});
    facts.push_back({u"start at login"_s, loginItem(platform.loginItem.status())});
    facts.push_back({u"open ads by themselves"_s, answer(settings.boolean(u"autoOpenAds"_s).value_or(false))});
    append(facts, guardFacts(platform.foreground));
    return facts;
}

QString lines(const Facts& facts)
{
    QString text;
    for (const auto& [name, value] : facts)
        text += name + u": "_s + value + u'\n';
    return text;
}

} // namespace

QCoro::Task<QString> Diagnosis::ofRunning(Platform platform, const RecentErrors& errors)
{
    auto facts = factsOf(platform, u"yes"_s);
    append(facts, errorFacts(errors, platform.clock.now()));
    return withKeyring(platform, std::move(facts));
}

QCoro::Task<QString> Diagnosis::ofOther(Platform platform, bool isAnyRunning)
{
    return withKeyring(platform, factsOf(platform, isAnyRunning ? u"yes, but it does not answer"_s : u"no"_s));
}

QCoro::Task<QString> Diagnosis::withKeyring(Platform platform, Facts facts)
{
    const Keychain keychain(platform.secrets);
    const auto found = co_await keychain.lookForToken();
    facts.push_back({u"keyring"_s, keyring(found)});
    co_return lines(facts);
}

} // namespace orvella
