#pragma once

#include "updates/PackageTransaction.h"
#include "updates/PackageTrouble.h"

#include <QString>

namespace orvella {

/// How far the search for an update is, and what came of it. Versions are those that a viewer reads.
struct UpdateState {
    enum class Stage {
        checking,
        upToDate,
        available,
        /// Available, but the system keeps the version it has.
        heldBack,
        installing,
        installed,
        /// Neither `checkFailed` nor `installationFailed` has changed anything.
        checkFailed,
        installationFailed,
    };

    Stage stage = Stage::checking;
    QString currentVersion;
    QString newVersion;
    /// Whether the list of packages is that of today: the system may refuse to renew it.
    bool isListRenewed = true;
    /// Of the installation.
    PackageProgress progress;
    /// Of a stage that failed.
    PackageTrouble trouble;
};

} // namespace orvella
