#include "core/LaunchAtLogin.h"

#include "platform/LoginItem.h"
#include "platform/SettingsStore.h"

namespace orvella {

namespace {

constexpr QLatin1String kDidConfigureLaunchAtLogin {"didConfigureLaunchAtLogin"};

void registerOnFirstRun(LoginItem& item, SettingsStore& settings)
{
    if (settings.boolean(kDidConfigureLaunchAtLogin).value_or(false))
        return;
    // Deliberate: once ever, successful or not; a viewer who takes the item away, or has switched it off, has the last
    // word.
    if (item.status() != LoginItem::Status::requiresApproval)
        static_cast<void>(item.registerItem());
    settings.setBoolean(kDidConfigureLaunchAtLogin, true);
}

} // namespace

LaunchAtLogin::LaunchAtLogin(
    LoginItem& item, SettingsStore& settings, Published<bool>& isEnabled, Published<std::optional<QString>>& lastError)
    : m_item(item)
    , m_isEnabled(isEnabled)
    , m_lastError(lastError)
{
    m_item.watch([self = QPointer(this)](const Result<void>& answer) {
        if (self)
            self->answered(answer);
    });
    registerOnFirstRun(m_item, settings);
    m_isEnabled = isItemEnabled();
}

void LaunchAtLogin::set(bool enabled)
{
    m_hasViewerAsked = true;
    note(enabled ? m_item.registerItem() : m_item.unregisterItem());
}

void LaunchAtLogin::refresh()
{
    if (const auto isEnabled = isItemEnabled(); isEnabled != m_isEnabled())
        m_isEnabled = isEnabled;
}

void LaunchAtLogin::answered(const Result<void>& answer)
{
    if (m_hasViewerAsked)
        note(answer);
    else
        // Deliberate: what becomes of the first run's registration is told to nobody.
        m_isEnabled = isItemEnabled();
}

void LaunchAtLogin::note(const Result<void>& outcome)
{
    if (!outcome)
        m_lastError = outcome.error().description;
    m_isEnabled = isItemEnabled();
    if (outcome)
        m_lastError = std::nullopt;
}

bool LaunchAtLogin::isItemEnabled() const
{
    return m_item.status() == LoginItem::Status::enabled;
}

} // namespace orvella
