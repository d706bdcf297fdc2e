#pragma once

#include <QString>

namespace orvella {

/// Why the system's package service did not do what it was asked.
struct PackageTrouble {
    enum class Kind {
        /// Withdrawn, by the viewer or by another program.
        cancelled,
        /// There is no such service.
        absent,
        /// The viewer may not do that, or did not give the password.
        refused,
        noNetwork,
        /// Another program is changing the system's software.
        busy,
        /// The package is signed by nobody whom the system trusts.
        untrusted,
        /// Other packages would have to go.
        wouldRemove,
        /// The program did not come with the system's packages.
        unknownPackage,
        /// It says nothing for too long.
        silent,
        /// It ended in the middle.
        gone,
        /// Anything else that it reports.
        failed,
    };

    Kind kind = Kind::failed;
    /// The service's own plain words for the viewer, or nothing.
    QString words;

    friend bool operator==(const PackageTrouble&, const PackageTrouble&) = default;
};

/// From the name of an error on the bus.
[[nodiscard]] PackageTrouble troubleOfBus(const QString& errorName);

/// From PackageKit's PkErrorEnum and the text that comes with it.
[[nodiscard]] PackageTrouble troubleOfCode(uint code, const QString& words);

/// From PackageKit's PkExitEnum, where it named no error.
[[nodiscard]] PackageTrouble troubleOfExit(uint exit);

} // namespace orvella
