#include "ui/ad/AdWindowView.h"

#include "ui/Compose.h"
#include "ui/Money.h"
#include "ui/RefreshOnChange.h"
#include "ui/ShownText.h"
#include "ui/ad/AdTextButton.h"
#include "ui/ad/AdViewing.h"
#include "ui/ad/CountdownGauge.h"
#include "ui/controls/IconButton.h"
#include "ui/controls/TextLabel.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kLeadingPadding = 12;
constexpr int kTrailingPadding = 8;
constexpr int kGapAfterText = 8;
constexpr int kGap = 6;
constexpr int kGapBetweenIcons = 4;

constexpr double kLeastWidth = 260;
constexpr double kGreatestWidth = 640;
/// Everything in the row that is no text.
constexpr double kRest = 76;

QString body(const AdViewing& viewing)
{
    return shownText(viewing.ad().body).simplified();
}

QString earningsText(const AdViewing& viewing)
{
    return Money::formatApproximate(viewing.earningsCents());
}

} // namespace

AdWindowView::AdWindowView(const Look& look, AdViewing& viewing)
    : m_look(look)
    , m_viewing(viewing)
    , m_counting(new Conditional([this] { return gauge(); }))
    , m_paid(new Conditional([this] { return paid(); }))
{
    for (auto* const slot : {m_counting, m_paid})
        slot->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    setLayout(row(0,
        {
            FixedSpace {kLeadingPadding},
            adText(),
            FixedSpace {kGapAfterText},
            m_counting,
            m_paid,
            FixedSpace {kGap},
            earnings(),
            FixedSpace {kGap},
            information(),
            FixedSpace {kGapBetweenIcons},
            close(),
            FixedSpace {kTrailingPadding},
        }));
    refreshOnChange(*this, m_viewing, [this] { refresh(); });
    connect(&look, &Look::changed, this, &AdWindowView::fit);
    fit();
    refresh();
}

QWidget& AdWindowView::informationButton()
{
    return *m_information;
}

int AdWindowView::contentWidth(const Look& look, const AdViewing& viewing)
{
    const QFontMetricsF text(look.font(TypeStyle::bodyStrong));
    const QFontMetricsF money(look.font(TypeStyle::earnings));
    const auto width = text.horizontalAdvance(body(viewing)) + money.horizontalAdvance(earningsText(viewing))
        + money.horizontalAdvance(tr("Paid")) + kRest;
    return static_cast<int>(std::clamp(std::ceil(width), kLeastWidth, kGreatestWidth));
}

QWidget* AdWindowView::adText()
{
    auto* const button = new AdTextButton(m_look, body(m_viewing), kHeight);
    button->setObjectName(u"openAd"_s);
    button->setAccessibleName(tr("Open ad: %1").arg(shownText(m_viewing.ad().body)));
    connect(button, &QPushButton::clicked, this, [this] { m_viewing.openAd(); });
    return button;
}

QWidget* AdWindowView::gauge()
{
    m_gauge = new CountdownGauge(m_look, m_viewing.ad().requiredSeconds);
    m_gauge->setObjectName(u"gauge"_s);
    return m_gauge;
}

QWidget* AdWindowView::paid()
{
    auto* const word = label(m_look, TypeStyle::earnings, tr("Paid"), Tone::green);
    word->setObjectName(u"paid"_s);
    word->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return word;
}

QWidget* AdWindowView::earnings()
{
    m_earnings = label(m_look, TypeStyle::earnings, earningsText(m_viewing), Tone::secondary);
    m_earnings->setObjectName(u"earnings"_s);
    m_earnings->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_earnings->setToolTip(Money::preciseDescription(m_viewing.earningsCents()));
    m_earnings->setAccessibleDescription(m_earnings->toolTip());
    return m_earnings;
}

QWidget* AdWindowView::information()
{
    m_information = new IconButton(m_look, Symbol::info, kHeight);
    m_information->setObjectName(u"adInformation"_s);
    m_information->setToolTip(tr("Why you are seeing this ad"));
    m_information->setAccessibleName(tr("Ad information"));
    connect(
        m_information, &QPushButton::clicked, this, [this] { m_viewing.showDisclosure = !m_viewing.showDisclosure(); });
    return m_information;
}

QWidget* AdWindowView::close()
{
    m_close = new IconButton(m_look, Symbol::close, kHeight);
    m_close->setObjectName(u"close"_s);
    connect(m_close, &QPushButton::clicked, this, [this] { m_viewing.dismiss(); });
    return m_close;
}

void AdWindowView::refresh()
{
    const bool isPaid = m_viewing.completed();
    m_counting->setPresent(!isPaid);
    m_paid->setPresent(isPaid);
    if (!isPaid)
        m_gauge->setRemaining(m_viewing.remaining());
    m_earnings->setTone(isPaid ? Tone::green : Tone::secondary);
    m_information->setOpen(m_viewing.showDisclosure());
    m_close->setToolTip(isPaid ? tr("Close") : tr("Dismiss without earning"));
    m_close->setAccessibleName(isPaid ? tr("Close ad") : tr("Dismiss ad without earning"));
}

void AdWindowView::fit()
{
    setFixedSize(contentWidth(m_look, m_viewing), kHeight);
}

} // namespace orvella
