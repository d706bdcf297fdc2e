#pragma once

#include "platform/LoginItem.h"

#include <QString>
#include <QStringList>

namespace orvella {

/// A desktop entry in the folder of the programs that a session starts (Desktop Application Autostart Specification).
class AutostartLoginItem final : public LoginItem {
public:
    /// `command` is what the session starts: the absolute path of the program and its arguments.
    AutostartLoginItem(const QString& folder, QStringList command);

    Result<void> registerItem() override;
    /// An entry that is not there is a success.
    Result<void> unregisterItem() override;

    /// What the session would do with the entry that is there now: the viewer and the desktop's own tools change it
    /// too. `requiresApproval` for one that they have switched off, `notFound` for one whose program is gone.
    [[nodiscard]] Status status() const override;

private:
    QString m_path;
    QStringList m_command;
};

} // namespace orvella
