#pragma once

#include <QByteArray>

namespace orvella {

/// Sets a variable of the environment for as long as it lives.
class Variable final {
public:
    Variable(const char* name, const QByteArray& value)
        : m_name(name)
        , m_before(qgetenv(name))
    {
        qputenv(m_name, value);
    }

    ~Variable() { qputenv(m_name, m_before); }

    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* m_name;
    QByteArray m_before;
};

} // namespace orvella
