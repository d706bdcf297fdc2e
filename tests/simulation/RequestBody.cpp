#include "simulation/RequestBody.h"

namespace orvella::simulation {

bool RequestBody::flag(const QString& key) const
{
    const auto* const value = member(key).boolean();
    return value && *value;
}

qint64 RequestBody::length(const QString& key) const
{
    const auto* const value = member(key).array();
    return value ? std::ssize(*value) : 0;
}

QString RequestBody::text(const QString& key) const
{
    const auto* const value = member(key).string();
    return value ? *value : QString();
}

qint64 RequestBody::number(const QString& key) const
{
    return member(key).integer().value_or(0);
}

const Json& RequestBody::member(const QString& key) const
{
    static const Json kNone;
    const auto found = m_members.find(key);
    return found == m_members.end() ? kNone : found->second;
}

} // namespace orvella::simulation
