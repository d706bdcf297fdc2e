#pragma once

#include <QStringView>

#include <array>
#include <cstdint>

namespace orvella {

/// The pairs of neighbouring characters in a text, as a fingerprint of 128 bits. It answers most searches without
/// looking at the text again: what lacks a pair of the key cannot contain the key.
class CharacterPairs final {
public:
    constexpr explicit CharacterPairs(QStringView text)
    {
        for (qsizetype place = 1; place < text.size(); ++place) {
            const auto bit = hash(text[place - 1].unicode(), text[place].unicode());
            m_bits[bit / 64] |= std::uint64_t {1} << bit % 64;
        }
    }

    /// False is certain; true means that a search is needed.
    [[nodiscard]] constexpr bool mayContain(const CharacterPairs& key) const
    {
        std::uint64_t missing = 0;
        for (std::size_t word = 0; word < m_bits.size(); ++word)
            missing |= key.m_bits[word] & ~m_bits[word];
        return missing == 0;
    }

private:
    static constexpr unsigned hash(unsigned first, unsigned second) { return (first * 37 + second) % 128; }

    std::array<std::uint64_t, 2> m_bits {};
};

} // namespace orvella
