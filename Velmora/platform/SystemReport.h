#pragma once

#include <QString>

#include <vector>

namespace orvella {

/// What this system is like, for the report of a fault.
class SystemReport {
public:
    /// In English, whatever the viewer's language: somebody else reads it.
    struct Fact {
        QString name;
        QString value;

        friend bool operator==(const Fact&, const Fact&) = default;
    };

    virtual ~SystemReport() = default;

    /// Asked of the system afresh. Nothing of it names the computer, its users or their files.
    [[nodiscard]] virtual std::vector<Fact> facts() const = 0;
};

} // namespace orvella
