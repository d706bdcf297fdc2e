#include "sandbox/StrictObject.h"

#include "sandbox/Categories.h"

#include <algorithm>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

StrictObject::StrictObject(const Json& value, QString place, QString& problem)
    : m_members(value.object())
    , m_place(std::move(place))
    , m_problem(problem)
{
    if (!m_members)
        complain((m_place.isEmpty() ? u"the text"_s : m_place) + u" is not an object"_s);
}

QString StrictObject::text(const QString& name, qsizetype longest)
{
    const auto* const value = member(name);
    const auto* const string = value ? value->string() : nullptr;
    expect(string != nullptr, name, u"is not a text"_s);
    if (!string)
        return {};
    expect(!string->isEmpty(), name, u"is empty"_s);
    expect(string->size() <= longest, name, u"is longer than %1 characters"_s.arg(longest));
    return *string;
}

std::optional<QString> StrictObject::optionalText(const QString& name, qsizetype longest)
{
    if (!m_members || !m_members->contains(name))
        return std::nullopt;
    return text(name, longest);
}

bool StrictObject::boolean(const QString& name)
{
    const auto* const value = member(name);
    const auto* const boolean = value ? value->boolean() : nullptr;
    expect(boolean != nullptr, name, u"is neither true nor false"_s);
    return boolean && *boolean;
}

qint64 StrictObject::integer(const QString& name, qint64 least, qint64 most)
{
    const auto* const value = member(name);
    const auto integer = value ? value->integer() : std::nullopt;
    expect(integer.has_value(), name, u"is not an integer"_s);
    if (!integer)
        return least;
    expect(*integer >= least && *integer <= most, name, u"is not within %1 and %2"_s.arg(least).arg(most));
    return *integer;
}

double StrictObject::number(const QString& name)
{
    const auto* const value = member(name);
    const auto number = value ? value->number() : std::nullopt;
    expect(number.has_value(), name, u"is not a number"_s);
    return number.value_or(0);
}

const Json::Array& StrictObject::array(const QString& name)
{
    static const Json::Array kNone;
    const auto* const value = member(name);
    const auto* const array = value ? value->array() : nullptr;
    expect(array != nullptr, name, u"is not an array"_s);
    return array ? *array : kNone;
}

QStringList StrictObject::categories(const QString& name)
{
    QStringList keys;
    for (const auto& element : array(name)) {
        const auto* const key = element.string();
        expect(key != nullptr, name, u"holds something that is not a text"_s);
        if (!key)
            return {};
        expect(isCategory(*key), name, u"holds an unknown category"_s);
        keys.append(*key);
    }
    const auto ascending = std::ranges::adjacent_find(keys, std::ranges::greater_equal()) == keys.end();
    expect(ascending, name, u"is not sorted, each category once"_s);
    return keys;
}

QString StrictObject::placeOf(const QString& name) const
{
    return m_place.isEmpty() ? name : m_place + u'.' + name;
}

void StrictObject::complain(const QString& sentence)
{
    if (m_problem.isEmpty())
        m_problem = sentence;
}

void StrictObject::end()
{
    if (!m_members)
        return;
    for (const auto& [name, value] : *m_members) {
        // The name is not ours and may be anything: only a short one is repeated.
        if (!m_asked.contains(name))
            complain(placeOf(name.left(kUsualLength)) + u" is not expected"_s);
    }
}

const Json* StrictObject::member(const QString& name)
{
    m_asked.insert(name);
    if (!m_members)
        return nullptr;
    const auto found = m_members->find(name);
    if (found == m_members->end()) {
        complain(placeOf(name) + u" is missing"_s);
        return nullptr;
    }
    return &found->second;
}

void StrictObject::expect(bool holds, const QString& name, const QString& what)
{
    if (!holds)
        complain(placeOf(name) + u' ' + what);
}

} // namespace orvella::sandbox
