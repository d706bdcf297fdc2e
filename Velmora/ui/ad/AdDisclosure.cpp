#include "ui/ad/AdDisclosure.h"

#include "api/Records.h"
#include "ui/Compose.h"
#include "ui/ShownText.h"
#include "ui/controls/TextLabel.h"

#include <algorithm>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kWidth = 300;
constexpr int kPadding = 16;
constexpr int kSpacing = 8;

QString capitalised(const QString& word)
{
    return word.first(std::min<qsizetype>(word.size(), 1)).toUpper()
        + word.sliced(std::min<qsizetype>(word.size(), 1)).toLower();
}

/// A category key as the viewer reads it: "developer_tools" is "Developer Tools".
QString categoryName(const QString& key)
{
    auto words = QString(key).replace(u'_', u' ').split(u' ');
    for (auto& word : words)
        word = capitalised(word);
    return words.join(u' ');
}

QString reason(const QStringList& categories)
{
    if (categories.isEmpty())
        return AdDisclosure::tr("Broad delivery matched your language. No app category was used.");
    QStringList names;
    for (const auto& category : categories)
        names.append(categoryName(shownText(category)));
    return AdDisclosure::tr("Matched using consented broad categories: %1. Raw app names were not sent.")
        .arg(shownText(names.join(u", "_s)));
}

} // namespace

AdDisclosure::AdDisclosure(const Look& look, const AvailableAd& ad)
{
    // More than any advertiser's name and all categories together need; the window must not outgrow the screen.
    const auto nameLines = TextLabel::Lines::three;
    const auto reasonLines = TextLabel::Lines::twenty;
    setLayout(padded({kPadding, kPadding, kPadding, kPadding},
        column(kSpacing,
            {
                label(look, TypeStyle::headline, tr("Paid ad by %1").arg(shownText(ad.advertiserName)), Tone::primary,
                    nameLines),
                label(look, TypeStyle::callout, reason(ad.matchedCategories), Tone::primary, reasonLines),
                label(look, TypeStyle::caption,
                    tr("Change category matching from the Orvella menu. Anonymous mode disables category targeting."),
                    Tone::secondary, TextLabel::Lines::all),
            })));
    connect(&look, &Look::changed, this, &AdDisclosure::fit);
    fit();
}

void AdDisclosure::fit()
{
    setFixedSize(kWidth, layout()->heightForWidth(kWidth));
}

} // namespace orvella
