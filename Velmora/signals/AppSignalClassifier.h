#pragma once

#include "platform/RunningApplications.h"
#include "signals/CategoryRules.h"

#include <QStringList>
#include <QStringView>

#include <span>

/// Turns the running applications into broad categories of work. Only these and the count may leave the computer, never
/// a name or an identifier; whether they may is not decided here.
namespace orvella::AppSignalClassifier {

/// What the applications say together.
struct Categories {
    /// Category keys, each once, in ascending order of their characters.
    QStringList keys;
    /// How many regular applications were looked at.
    qint64 rawAppCount = 0;
};

/// The categories of the applications that run now.
[[nodiscard]] Categories currentCategories(const RunningApplications& applications);

/// The categories of the regular ones among `applications`.
[[nodiscard]] Categories categories(std::span<const RunningApplication> applications);

/// Whether `text` contains one of the keys, character for character.
[[nodiscard]] bool matches(std::span<const CategoryKey> keys, QStringView text);

} // namespace orvella::AppSignalClassifier
