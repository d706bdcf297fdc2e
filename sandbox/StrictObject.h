#pragma once

#include "base/Json.h"

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvella::sandbox {

/// Reads the members of one JSON object and takes nothing that was not agreed on.
///
/// Every member is asked for by name; what is missing, mistyped, too long or never asked for is written down as one
/// sentence that names the place. Only the first problem is kept, and what is read after it means nothing.
class StrictObject final {
public:
    static constexpr qsizetype kUsualLength = 200;

    /// `place` names the object in the sentences; `problem` is shared by everything that reads the same text.
    StrictObject(const Json& value, QString place, QString& problem);

    /// A text of 1 to `longest` UTF-16 units.
    [[nodiscard]] QString text(const QString& name, qsizetype longest = kUsualLength);
    /// The same, but it may be left out.
    [[nodiscard]] std::optional<QString> optionalText(const QString& name, qsizetype longest = kUsualLength);
    [[nodiscard]] bool boolean(const QString& name);
    [[nodiscard]] qint64 integer(const QString& name, qint64 least, qint64 most);
    [[nodiscard]] double number(const QString& name);
    [[nodiscard]] const Json::Array& array(const QString& name);
    /// Keys of broad categories, each once and in ascending order, as the client makes them.
    [[nodiscard]] QStringList categories(const QString& name);

    /// The place of a member, for a sentence about it.
    [[nodiscard]] QString placeOf(const QString& name) const;
    /// Writes the problem down unless there is one already.
    void complain(const QString& sentence);
    /// Complains about members that nobody asked for. Call it last.
    void end();

private:
    const Json* member(const QString& name);
    void expect(bool holds, const QString& name, const QString& what);

    const Json::Object* m_members;
    QString m_place;
    QString& m_problem;
    QSet<QString> m_asked;
};

} // namespace orvella::sandbox
