#pragma once

#include "base/Json.h"

#include <optional>

namespace orvella {
class AppState;
}

namespace orvella::simulation {

/// What the viewer's settings have to be: the rules between them, written a second time.
struct ViewerSettings {
    enum class Name { anonymousMode, appSignalConsent, ageConfirmed, autoOpenAds, showLaunchWindowAtStartup };

    bool anonymousMode = true;
    bool appSignalConsent = false;
    bool ageConfirmed = false;
    bool autoOpenAds = false;
    bool showLaunchWindowAtStartup = true;
    /// Consent without a confirmed age, as it was found in the file, stands until one of the three is assigned.
    bool isFoundConsentAllowed = false;

    /// What a file of settings says; nothing of it where it is not readable.
    [[nodiscard]] static ViewerSettings read(const QByteArray& file);

    void assign(Name name, bool value);

    /// What is not so in `state`; nothing where all is.
    [[nodiscard]] std::optional<QString> differenceTo(const AppState& state) const;
    /// What is not so in a file.
    [[nodiscard]] std::optional<QString> differenceTo(const QByteArray& file) const;
};

} // namespace orvella::simulation
