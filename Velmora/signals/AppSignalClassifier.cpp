#include "signals/AppSignalClassifier.h"

#include <algorithm>
#include <vector>

namespace orvella::AppSignalClassifier {

namespace {

/// QString lowers by Unicode's own rules, whatever the viewer's locale: a Turkish "I" is an "i" here too.
QString matchText(const RunningApplication& application)
{
    return application.identifier.value_or(QString()).toLower() + u' ' + application.name.value_or(QString()).toLower();
}

bool matchesAny(std::span<const CategoryKey> keys, QStringView text, const CharacterPairs& pairs)
{
    return std::ranges::any_of(
        keys, [&](const CategoryKey& key) { return pairs.mayContain(key.pairs) && text.contains(key.text); });
}

} // namespace

Categories currentCategories(const RunningApplications& applications)
{
    return categories(applications.list());
}

Categories categories(std::span<const RunningApplication> applications)
{
    const auto rules = categoryRules();
    std::vector<bool> found(rules.size());
    Categories result;

    for (const auto& application : applications) {
        if (!application.isRegular)
            continue;
        ++result.rawAppCount;
        const auto text = matchText(application);
        const CharacterPairs pairs(text);
        for (std::size_t rule = 0; rule < rules.size(); ++rule)
            found[rule] = found[rule] || matchesAny(rules[rule].keys, text, pairs);
    }

    for (std::size_t rule = 0; rule < rules.size(); ++rule) {
        if (!found[rule])
            continue;
        for (const auto category : rules[rule].categories)
            result.keys.append(category.toString());
    }
    result.keys.sort();
    result.keys.removeDuplicates();
    return result;
}

bool matches(std::span<const CategoryKey> keys, QStringView text)
{
    return matchesAny(keys, text, CharacterPairs(text));
}

} // namespace orvella::AppSignalClassifier
