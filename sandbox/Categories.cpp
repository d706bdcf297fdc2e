#include "sandbox/Categories.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace orvella::sandbox {

namespace {

constexpr std::array kCategories {
    u"ai_tools",
    u"cloud_infrastructure",
    u"communication",
    u"customer_support",
    u"data_analytics",
    u"design_tools",
    u"developer_tools",
    u"ecommerce",
    u"education_research",
    u"finance_business",
    u"hr_recruiting",
    u"legal_compliance",
    u"media_creation",
    u"productivity",
    u"project_management",
    u"sales_marketing",
    u"security_privacy",
    u"writing_content",
};

} // namespace

bool isCategory(const QString& key)
{
    return std::ranges::any_of(kCategories, [&key](const char16_t* known) { return key == QStringView(known); });
}

QString categoryLabel(const QString& key)
{
    // The two abbreviations would not survive the rule for the others.
    auto words = key.split(u'_');
    for (auto& word : words) {
        if (word.size() == 2)
            word = word.toUpper();
    }
    words.front().front() = words.front().front().toUpper();
    return words.join(u' ');
}

} // namespace orvella::sandbox
