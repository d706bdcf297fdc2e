#pragma once

#include "sandbox/FaultPlan.h"

#include <QString>
#include <QStringList>

#include <expected>
#include <optional>

namespace orvella::sandbox {

/// The command line.
struct Options {
    enum class Action { run, help, version };

    Action action = Action::run;
    quint16 port = 0;
    QString databasePath;
    QString campaignsPath;
    std::optional<qint64> pollSeconds;
    std::optional<qint64> requiredSeconds;
    FaultPlan faults;

    /// `arguments` begins with the program's name. The error is one sentence.
    [[nodiscard]] static std::expected<Options, QString> parse(const QStringList& arguments);

    [[nodiscard]] static QString helpText();
};

} // namespace orvella::sandbox
