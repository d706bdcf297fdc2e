#pragma once

#include "base/Json.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace orvella {

/// External test material, which is not part of the repository. What is missing or unreadable stops the test.
class Corpus final {
public:
    Corpus() = delete;

    /// The content of a file, named from the folder of all material.
    [[nodiscard]] static QByteArray file(const QString& name);
    /// The JSON value in a file.
    [[nodiscard]] static Json json(const QString& name);
    /// The names of the files in a folder; there is at least one.
    [[nodiscard]] static QStringList filesIn(const QString& folder);

    /// Strings that are known to break programs; there are more than a hundred.
    [[nodiscard]] static QStringList hostileStrings();

    /// A member of a record; null where there is none.
    [[nodiscard]] static const Json& member(const Json& record, const QString& key);
    /// A member that is a text; empty where there is none.
    [[nodiscard]] static QString text(const Json& record, const QString& key);

    /// One writing for each host: an IPv6 address has several, with and without brackets.
    [[nodiscard]] static QString hostIn(const QString& text);
};

} // namespace orvella
