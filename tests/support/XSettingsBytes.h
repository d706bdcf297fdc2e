#pragma once

#include <QByteArray>

#include <array>
#include <utility>
#include <variant>
#include <vector>

namespace orvella {

/// Writes the list of settings as a manager puts it onto its window.
class XSettingsBytes final {
public:
    enum class Order { littleEndian, bigEndian };
    using Colour = std::array<quint16, 4>;
    using Setting = std::pair<QByteArray, std::variant<qint32, QByteArray, Colour>>;

    [[nodiscard]] static QByteArray of(const std::vector<Setting>& settings, Order order = Order::littleEndian);
};

} // namespace orvella
