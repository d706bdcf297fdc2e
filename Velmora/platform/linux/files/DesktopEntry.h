#pragma once

#include <QString>
#include <QStringList>

#include <map>
#include <optional>

namespace orvella {

/// A desktop entry file by the Desktop Entry Specification 1.5: its main group.
class DesktopEntry final {
public:
    /// Reads a file. Nothing where it cannot be read or has no main group.
    [[nodiscard]] static std::optional<DesktopEntry> read(const QString& path);
    [[nodiscard]] static std::optional<DesktopEntry> parse(const QString& text);

    /// The value as a string, with its escapes resolved.
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    /// The string in the language of a locale such as "de_DE.UTF-8@euro", else the one without a language.
    [[nodiscard]] std::optional<QString> localized(const QString& key, const QString& locale) const;
    /// The value where it is "true" or "false".
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;

    /// The values of a list; empty where there is none.
    [[nodiscard]] QStringList list(const QString& key) const;
    /// The words of "Exec", without its quotes. A percent sign that was doubled is one; field codes stay as they are.
    [[nodiscard]] QStringList command() const;

    /// The value as it stands in a file, with escapes.
    [[nodiscard]] static QString escaped(QString value);
    /// An argument as it stands in the value of "Exec", before the escapes of all values.
    [[nodiscard]] static QString quotedArgument(const QString& argument);

private:
    // As they stand in the file.
    std::map<QString, QString> m_values;
};

} // namespace orvella
