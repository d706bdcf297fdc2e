#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvella {

/// Where the program keeps its files: by the XDG Base Directory Specification 0.8, or all of them in a profile folder.
///
/// As that specification has it, a variable that is unset, empty or not an absolute path counts as unset.
class XdgDirectories final {
public:
    /// `profile` is a folder that takes everything the program writes; a relative one is taken from the working folder.
    XdgDirectories(const QProcessEnvironment& environment, const std::optional<QString>& profile);

    /// $XDG_CONFIG_HOME/orvella: the settings.
    [[nodiscard]] const QString& config() const { return m_config; }

    /// $XDG_STATE_HOME/orvella: what is kept between runs and is not a setting.
    [[nodiscard]] const QString& state() const { return m_state; }

    /// $XDG_DATA_HOME/orvella.
    [[nodiscard]] const QString& data() const { return m_data; }

    /// $XDG_CONFIG_HOME/autostart: the desktop entries that the session starts.
    [[nodiscard]] const QString& autostart() const { return m_autostart; }

    /// The folders with the desktop entries of installed applications, the most important first. They are the
    /// computer's, whatever the profile.
    [[nodiscard]] const QStringList& applications() const { return m_applications; }

    /// The folders with icon themes, in the same order and the computer's too.
    [[nodiscard]] const QStringList& icons() const { return m_icons; }

private:
    QString m_config;
    QString m_state;
    QString m_data;
    QString m_autostart;
    QStringList m_applications;
    QStringList m_icons;
};

} // namespace orvella
