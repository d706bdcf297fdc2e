#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace orvella {

/// A request as it came in, byte for byte.
struct RawRequest {
    /// All lines up to the empty one, without it.
    QByteArray head;
    QByteArray body;

    [[nodiscard]] QByteArray firstLine() const { return lines().constFirst(); }

    /// As they were written, in order.
    [[nodiscard]] QByteArrayList headerNames() const
    {
        QByteArrayList names;
        for (const auto& line : lines().sliced(1))
            names.append(line.first(line.indexOf(':')));
        return names;
    }

    /// The value of the header whose name is written exactly so.
    [[nodiscard]] std::optional<QByteArray> header(const QByteArray& name) const
    {
        for (const auto& line : lines().sliced(1)) {
            if (line.startsWith(name + ": "))
                return line.sliced(name.size() + 2);
        }
        return std::nullopt;
    }

private:
    [[nodiscard]] QByteArrayList lines() const { return QByteArray(head).replace("\r\n", "\n").split('\n'); }
};

} // namespace orvella
