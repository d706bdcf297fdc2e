#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace orvella {

/// The parts of the locale that the program follows.
enum class LocaleCategory { messages, monetary };

/// The name of the locale for a category, such as "de_DE.UTF-8", by POSIX: LC_ALL, else the category's own variable,
/// else LANG, whichever is set and not empty; "C" where none is.
[[nodiscard]] QString localeName(const QProcessEnvironment& environment, LocaleCategory category);

} // namespace orvella
