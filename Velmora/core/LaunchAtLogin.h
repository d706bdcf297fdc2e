#pragma once

#include "base/Published.h"
#include "base/Result.h"

#include <QString>

#include <optional>

namespace orvella {

class LoginItem;
class SettingsStore;

/// Whether the program starts when the viewer logs in. It has itself registered once ever, on the very first run; from
/// then on the viewer has the last word.
class LaunchAtLogin final : public QObject {
    Q_OBJECT

public:
    /// Writes what the system says to `isEnabled`, and to `lastError` why it refused what the viewer asked for.
    LaunchAtLogin(LoginItem& item, SettingsStore& settings, Published<bool>& isEnabled,
        Published<std::optional<QString>>& lastError);

    void set(bool enabled);
    /// Asks the system again.
    void refresh();

private:
    void answered(const Result<void>& answer);
    void note(const Result<void>& outcome);
    [[nodiscard]] bool isItemEnabled() const;

    LoginItem& m_item;
    Published<bool>& m_isEnabled;
    Published<std::optional<QString>>& m_lastError;
    bool m_hasViewerAsked = false;
};

} // namespace orvella
