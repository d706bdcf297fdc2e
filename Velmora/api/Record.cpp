#include "api/Record.h"

namespace orvella {

namespace {

Mismatch mismatch(const char* problem)
{
    return {{}, QCoreApplication::translate("Record", problem)};
}

} // namespace

Mismatch Mismatch::under(const QString& key) &&
{
    if (path.isEmpty())
        path = key;
    else if (path.startsWith(u'['))
        path.prepend(key);
    else
        path.prepend(key + u'.');
    return std::move(*this);
}

Failure Mismatch::failure() const
{
    const auto description = path.isEmpty()
        ? QCoreApplication::translate("Record", "The service's answer could not be read: it %1.").arg(problem)
        : QCoreApplication::translate("Record", "The service's answer could not be read: %1 %2.").arg(path, problem);
    return {Failure::Kind::undecodable, description};
}

std::optional<Mismatch> readValue(const Json& value, bool& out)
{
    const auto* const boolean = value.boolean();
    if (!boolean)
        return mismatch(QT_TRANSLATE_NOOP("Record", "is not true or false"));
    out = *boolean;
    return std::nullopt;
}

std::optional<Mismatch> readValue(const Json& value, qint64& out)
{
    const auto integer = value.integer();
    if (!integer)
        return mismatch(QT_TRANSLATE_NOOP("Record", "is not an integer"));
    out = *integer;
    return std::nullopt;
}

std::optional<Mismatch> readValue(const Json& value, double& out)
{
    const auto number = value.number();
    if (!number)
        return mismatch(QT_TRANSLATE_NOOP("Record", "is not a number"));
    out = *number;
    return std::nullopt;
}

std::optional<Mismatch> readValue(const Json& value, QString& out)
{
    const auto* const string = value.string();
    if (!string)
        return mismatch(QT_TRANSLATE_NOOP("Record", "is not a text"));
    out = *string;
    return std::nullopt;
}

std::optional<Mismatch> readValue(const Json& value, Secret& out)
{
    QString text;
    if (auto mismatch = readValue(value, text))
        return mismatch;
    out = Secret(text.toUtf8());
    return std::nullopt;
}

std::optional<Mismatch> readValue(const Json& value, QStringList& out)
{
    const auto* const array = value.array();
    if (!array)
        return mismatch(QT_TRANSLATE_NOOP("Record", "is not a list"));
    out.clear();
    for (const auto& element : *array) {
        if (auto mismatch = readValue(element, out.emplaceBack()))
            return std::move(*mismatch).under(QStringLiteral("[%1]").arg(out.size() - 1));
    }
    return std::nullopt;
}

const Json* presentMember(const Json::Object& object, const QString& key)
{
    const auto member = object.find(key);
    return member == object.end() || member->second.isNull() ? nullptr : &member->second;
}

} // namespace orvella
