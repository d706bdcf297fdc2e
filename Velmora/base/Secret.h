#pragma once

#include <QByteArray>
#include <QDebug>

#include <utility>

namespace orvella {

/// Bytes that must never be shown: the type cannot be printed, only revealed on purpose.
class Secret final {
public:
    Secret() = default;

    explicit Secret(QByteArray bytes)
        : m_bytes(std::move(bytes))
    {
    }

    [[nodiscard]] const QByteArray& reveal() const { return m_bytes; }

    friend bool operator==(const Secret&, const Secret&) = default;

private:
    QByteArray m_bytes;
};

QDebug operator<<(QDebug, const Secret&) = delete;

} // namespace orvella
