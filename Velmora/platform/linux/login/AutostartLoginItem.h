#pragma once

#include "platform/LoginItem.h"

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace orvella {

/// A desktop entry in the folder of the programs that a session starts (Desktop Application Autostart Specification).
class AutostartLoginItem final : public LoginItem {
public:
    struct Options {
        /// Where the entry lies.
        QString folder;
        /// What the session starts: the absolute path of the program and its arguments.
        QStringList command;
        /// Of the session: PATH and XDG_CURRENT_DESKTOP.
        QProcessEnvironment environment;
    };

    explicit AutostartLoginItem(Options options);

    Result<void> registerItem() override;
    /// An entry that is not there is a success.
    Result<void> unregisterItem() override;

    /// What becomes of the entry that is there now at the next login: the viewer and the desktops' own tools change it
    /// too. `requiresApproval` for one that they have switched off, on whatever desktop, or keep for other desktops;
    /// `notFound` for one whose program is gone; `notRegistered` for one that starts something else.
    [[nodiscard]] Status status() const override;

    /// It changes within the calls only.
    void watch(std::function<void(const Result<void>&)> /*answered*/) override {}

private:
    [[nodiscard]] bool isOwn(const QStringList& command) const;
    [[nodiscard]] bool isThere(const QString& program) const;

    Options m_options;
    QString m_path;
};

} // namespace orvella
