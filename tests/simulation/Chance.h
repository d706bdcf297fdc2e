#pragma once

#include <QtGlobal>

#include <chrono>
#include <iterator>
#include <random>

namespace orvella::simulation {

/// Everything that happens by chance, from one seed: the same seed gives the same choices on every machine.
class Chance final {
public:
    explicit Chance(quint64 seed)
        : m_engine(seed)
    {
    }

    /// A number from 0 up to `end`, which is left out and greater than 0.
    [[nodiscard]] qint64 below(qint64 end)
    {
        // The distributions of the standard library may differ from machine to machine.
        return static_cast<qint64>(m_engine() % static_cast<quint64>(end));
    }

    [[nodiscard]] qint64 between(qint64 least, qint64 greatest) { return least + below(greatest - least + 1); }

    [[nodiscard]] std::chrono::milliseconds between(
        std::chrono::milliseconds shortest, std::chrono::milliseconds longest)
    {
        return std::chrono::milliseconds(between(shortest.count(), longest.count()));
    }

    /// True once in `times`.
    [[nodiscard]] bool oneIn(qint64 times) { return below(times) == 0; }

    template <class Range> [[nodiscard]] const auto& pick(const Range& range)
    {
        return *std::next(std::begin(range), below(std::ssize(range)));
    }

private:
    std::mt19937_64 m_engine;
};

} // namespace orvella::simulation
