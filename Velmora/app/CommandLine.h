#pragma once

#include "platform/Instance.h"
#include "platform/OverlaySettings.h"

#include <QStringList>

#include <optional>
#include <vector>

namespace orvella {

/// What the program was started with.
struct CommandLine {
    enum class Wish { run, diagnose, showHelp, showVersion };

    Wish wish = Wish::run;
    /// What it is to do besides running.
    Instance::Request request = Instance::Request::reopen;
    /// The folder that takes everything the program keeps.
    std::optional<QString> profile;
    /// Settings for this run only.
    std::vector<OverlaySettings::Entry> overlays;

    /// Reads the arguments, the program's own name first. Fails with `refused` and a sentence on anything it does not
    /// know.
    [[nodiscard]] static Result<CommandLine> parse(const QStringList& arguments);

    [[nodiscard]] static QString helpText();
    [[nodiscard]] static QString versionText();
};

} // namespace orvella
