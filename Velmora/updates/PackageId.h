#pragma once

#include <QString>

#include <optional>

namespace orvella {

/// A package as PackageKit names it: "name;version;architecture;origin".
struct PackageId {
    /// The whole of it, which is what PackageKit takes back.
    QString text;
    QString name;
    QString version;

    /// Nothing where the text has not four parts, or no name or no version.
    [[nodiscard]] static std::optional<PackageId> parse(const QString& text);

    /// The version of the program itself, without what packagers put before it (the epoch) and behind it (the
    /// revision), as Debian and RPM write versions.
    [[nodiscard]] QString shownVersion() const;

    /// As above, beside that of `other`: where the two would look alike, the whole version, so that they do not.
    [[nodiscard]] QString shownVersionBeside(const PackageId& other) const;

    friend bool operator==(const PackageId&, const PackageId&) = default;
};

} // namespace orvella
