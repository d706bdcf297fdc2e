#pragma once

#include "signals/CharacterPairs.h"

#include <QStringView>

#include <span>

namespace orvella {

/// A lower-case fragment of an application's identifier or name, possibly with blanks.
struct CategoryKey {
    // NOLINTNEXTLINE(google-explicit-constructor): the table of rules is written as a list of texts.
    consteval CategoryKey(const char16_t* key)
        : text(key)
        , pairs(key)
    {
    }

    QStringView text;
    CharacterPairs pairs;
};

/// An application whose text contains one of the keys belongs to the categories.
struct CategoryRule {
    std::span<const CategoryKey> keys;
    /// What the service calls the categories.
    std::span<const QStringView> categories;
};

/// The rules that decide which broad kinds of work an application stands for.
[[nodiscard]] std::span<const CategoryRule> categoryRules();

} // namespace orvella
