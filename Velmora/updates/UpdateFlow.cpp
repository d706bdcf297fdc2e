#include "updates/UpdateFlow.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

using Stage = UpdateState::Stage;

namespace {

constexpr auto kProgram = "orvella"_L1;
constexpr std::array kPackages {kProgram, "orvella-updater"_L1};

// Bits of PackageKit's PkFilterEnum and PkTransactionFlagEnum.
constexpr qulonglong kAnyPackage = 1U << 1U;
constexpr qulonglong kInstalledPackage = 1U << 2U;
constexpr qulonglong kOnlyTrusted = 1U << 1U;
constexpr qulonglong kSimulate = 1U << 2U;

// Of its PkInfoEnum.
constexpr uint kBlocked = 9;
constexpr uint kRemoving = 13;

// What runs while a package is installed may say nothing for long.
constexpr auto kInstallationPatience = std::chrono::minutes(15);

/// Never asks for a password: the viewer wanted to know something, not to change the system.
PackageRequest renewal()
{
    return {.method = u"RefreshCache"_s, .arguments = {false}};
}

PackageRequest questionForInstalled()
{
    return {
        .method = u"Resolve"_s, .arguments = {QVariant::fromValue(kInstalledPackage), QStringList {QString(kProgram)}}};
}

PackageRequest questionForUpdates()
{
    return {.method = u"GetUpdates"_s, .arguments = {QVariant::fromValue(kAnyPackage)}};
}

PackageRequest rehearsal(const QStringList& packages)
{
    return {.method = u"UpdatePackages"_s, .arguments = {QVariant::fromValue(kOnlyTrusted | kSimulate), packages}};
}

PackageRequest installation(const QStringList& packages)
{
    return {.method = u"UpdatePackages"_s,
        .arguments = {QVariant::fromValue(kOnlyTrusted), packages},
        .mayAsk = true,
        .patience = kInstallationPatience};
}

/// Whether the question is worth asking although the list of packages could not be renewed.
bool isTolerable(const PackageTrouble& trouble)
{
    using enum PackageTrouble::Kind;
    return trouble.kind != absent && trouble.kind != gone && trouble.kind != silent;
}

bool isOffline(const PackageTransaction::Answer& renewed)
{
    return !renewed && renewed.error().kind == PackageTrouble::Kind::noNetwork;
}

QString nameOf(const ToldPackage& told)
{
    return told.id.name;
}

} // namespace

UpdateFlow::UpdateFlow(QDBusConnection bus, Clock& clock)
    : m_bus(std::move(bus))
    , m_clock(clock)
{
}

UpdateFlow::~UpdateFlow()
{
    m_stop.request_stop();
}

void UpdateFlow::check()
{
    look(startOver());
}

void UpdateFlow::install()
{
    if (m_state.stage == Stage::available)
        update(startOver());
}

QCoro::Task<> UpdateFlow::look(std::stop_token stop)
{
    m_state = {};
    enter(Stage::checking);

    PackageTransaction renewing(m_bus, m_clock, renewal(), stop);
    const auto renewed = co_await renewing;
    if (stop.stop_requested())
        co_return;
    m_state.isListRenewed = renewed.has_value();
    if (!renewed && !isTolerable(renewed.error())) {
        fail(Stage::checkFailed, renewed.error());
        co_return;
    }

    PackageTransaction resolving(m_bus, m_clock, questionForInstalled(), stop);
    const auto installed = co_await resolving;
    if (stop.stop_requested())
        co_return;
    if (!installed) {
        fail(Stage::checkFailed, installed.error());
        co_return;
    }
    const auto program = std::ranges::find(*installed, kProgram, nameOf);
    if (program == installed->end()) {
        fail(Stage::checkFailed, {PackageTrouble::Kind::unknownPackage, {}});
        co_return;
    }
    m_state.currentVersion = program->id.shownVersion();

    PackageTransaction listing(m_bus, m_clock, questionForUpdates(), stop);
    const auto updates = co_await listing;
    if (stop.stop_requested())
        co_return;
    if (!updates)
        fail(Stage::checkFailed, updates.error());
    // An old list is no ground for saying that there is nothing new.
    else if (const auto stage = take(program->id, *updates); stage == Stage::upToDate && isOffline(renewed))
        fail(Stage::checkFailed, renewed.error());
    else
        enter(stage);
}

QCoro::Task<> UpdateFlow::update(std::stop_token stop)
{
    m_state.progress = {};
    enter(Stage::installing);

    PackageTransaction rehearsing(m_bus, m_clock, rehearsal(m_updates), stop);
    const auto rehearsed = co_await rehearsing;
    if (stop.stop_requested())
        co_return;
    if (!rehearsed) {
        fail(Stage::installationFailed, rehearsed.error());
        co_return;
    }
    if (std::ranges::find(*rehearsed, kRemoving, &ToldPackage::info) != rehearsed->end()) {
        fail(Stage::installationFailed, {PackageTrouble::Kind::wouldRemove, {}});
        co_return;
    }

    PackageTransaction installing(
        m_bus, m_clock, installation(m_updates), stop, [this](const PackageProgress& progress) {
            m_state.progress = progress;
            Q_EMIT changed();
        });
    const auto installed = co_await installing;
    if (stop.stop_requested())
        co_return;
    if (installed)
        enter(Stage::installed);
    else
        fail(Stage::installationFailed, installed.error());
}

/// What the updates that there are mean for the program.
UpdateState::Stage UpdateFlow::take(const PackageId& installed, const QList<ToldPackage>& updates)
{
    m_updates.clear();
    for (const auto& [info, id] : updates) {
        if (info != kBlocked && std::ranges::find(kPackages, id.name) != kPackages.end())
            m_updates.append(id.text);
    }
    const auto program = std::ranges::find(updates, kProgram, nameOf);
    if (program == updates.end())
        return Stage::upToDate;
    m_state.currentVersion = installed.shownVersionBeside(program->id);
    m_state.newVersion = program->id.shownVersionBeside(installed);
    return program->info == kBlocked ? Stage::heldBack : Stage::available;
}

void UpdateFlow::enter(Stage stage)
{
    m_state.stage = stage;
    Q_EMIT changed();
}

void UpdateFlow::fail(Stage stage, const PackageTrouble& trouble)
{
    m_state.trouble = trouble;
    enter(stage);
}

std::stop_token UpdateFlow::startOver()
{
    m_stop.request_stop();
    m_stop = {};
    return m_stop.get_token();
}

} // namespace orvella
