#include "updates/UpdateTexts.h"

namespace orvella {

QString UpdateTexts::activity(PackageProgress::Activity activity)
{
    using enum PackageProgress::Activity;
    switch (activity) {
    case preparing:
        return tr("Preparing the installation…");
    case waiting:
        return tr("Waiting until your system is done with other installations…");
    case asking:
        return tr("Waiting for your permission…");
    case downloading:
        return tr("Downloading…");
    case installing:
        return tr("Installing…");
    }
    return {};
}

QString UpdateTexts::reason(const PackageTrouble& trouble)
{
    using enum PackageTrouble::Kind;
    switch (trouble.kind) {
    case cancelled:
        return tr("It was cancelled.");
    case absent:
        return tr("PackageKit, which installs updates, is not there. Look for updates in your software centre.");
    case refused:
        return tr("Your system did not allow it.");
    case noNetwork:
        return tr("There is no network.");
    case busy:
        return tr("Another program is installing software. Try again when it is done.");
    case untrusted:
        return tr("The update is not signed by a source that your system trusts.");
    case wouldRemove:
        return tr("The update would remove other programs. Your software centre shows which ones.");
    case unknownPackage:
        return tr("This Orvella did not come with the packages of your system, so they do not bring its updates.");
    case silent:
        return tr("Your system's package service does not answer.");
    case gone:
        return tr("Your system's package service ended before it was done.");
    case failed:
        break;
    }
    return trouble.words.isEmpty() ? tr("Your system's package service reports an error.")
                                   : tr("Your system's package service reports: %1").arg(trouble.words);
}

QString UpdateTexts::headline(const UpdateState& state)
{
    using enum UpdateState::Stage;
    switch (state.stage) {
    case checking:
        return tr("Looking for a newer version…");
    case upToDate:
        return tr("Orvella is up to date.");
    case available:
    case heldBack:
        return tr("Version %1 is available.").arg(state.newVersion);
    case installing:
        return tr("Installing version %1…").arg(state.newVersion);
    case installed:
        return tr("Version %1 is installed.").arg(state.newVersion);
    case checkFailed:
        return tr("Orvella could not look for updates.");
    case installationFailed:
        return tr("Version %1 could not be installed.").arg(state.newVersion);
    }
    return {};
}

QString UpdateTexts::detail(const UpdateState& state)
{
    using enum UpdateState::Stage;
    switch (state.stage) {
    case checking:
        return {};
    case upToDate:
        return state.isListRenewed
            ? tr("You have version %1.").arg(state.currentVersion)
            : tr("You have version %1. The list of packages could not be renewed, so there may be a newer one.")
                  .arg(state.currentVersion);
    case available:
        return tr("You have version %1.").arg(state.currentVersion);
    case heldBack:
        return tr("Your system is set to keep version %1.").arg(state.currentVersion);
    case installing:
        return activity(state.progress.activity);
    case installed:
        return tr("It takes effect when Orvella is started again.");
    case checkFailed:
    case installationFailed:
        return reason(state.trouble);
    }
    return {};
}

} // namespace orvella
