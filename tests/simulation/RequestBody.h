#pragma once

#include "base/Json.h"

namespace orvella::simulation {

/// Reads the body of a request, in which nothing has to be there.
class RequestBody final {
public:
    explicit RequestBody(const Json::Object& members)
        : m_members(members)
    {
    }

    /// False where it is missing.
    [[nodiscard]] bool flag(const QString& key) const;
    /// Of a list; 0 where it is missing.
    [[nodiscard]] qint64 length(const QString& key) const;
    /// Empty where it is missing.
    [[nodiscard]] QString text(const QString& key) const;
    /// 0 where it is missing.
    [[nodiscard]] qint64 number(const QString& key) const;

private:
    [[nodiscard]] const Json& member(const QString& key) const;

    const Json::Object& m_members;
};

} // namespace orvella::simulation
