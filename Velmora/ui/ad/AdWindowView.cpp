#include "ui/ad/AdWindowView.h"

#include "ui/Money.h"
#include "ui/ad/AdViewing.h"

#include <QBoxLayout>
#include <QFontDatabase>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kHeight = 44;
constexpr int kLeftPadding = 12;
constexpr int kRightPadding = 8;
constexpr int kGap = 12;
constexpr int kCloseSlot = 24;

/// The text in a palette that shows money which is the viewer's.
QPalette paid(QPalette palette)
{
    const bool isDark = palette.color(QPalette::Window).lightnessF() < 0.5F;
    palette.setColor(QPalette::WindowText, isDark ? QColor(0x4c, 0xd4, 0x84) : QColor(0x0b, 0x7a, 0x3e));
    return palette;
}

/// The text comes from outside: an ampersand in it makes no shortcut.
QString withoutShortcuts(const QString& text)
{
    return QString(text).replace(u'&', u"&&"_s);
}

QFont moneyFont()
{
    auto font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setWeight(QFont::DemiBold);
    return font;
}

} // namespace

AdWindowView::AdWindowView(AdViewing& viewing)
    : m_viewing(viewing)
    , m_ad(adButton())
    , m_progress(progress())
    , m_earnings(earnings())
    , m_close(closeButton())
{
    setFixedHeight(kHeight);
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(kLeftPadding, 0, kRightPadding, 0);
    row->setSpacing(kGap);
    row->addWidget(m_ad, 1);
    row->addWidget(m_progress);
    row->addWidget(m_earnings);
    row->addWidget(m_close);
    connect(&m_viewing, &Observable::willChange, this, &AdWindowView::scheduleRefresh);
    refresh();
}

QPushButton* AdWindowView::adButton()
{
    const auto& body = m_viewing.ad().body;
    auto* const button = new QPushButton;
    button->setText(withoutShortcuts(body.simplified()));
    button->setFlat(true);
    button->setStyleSheet(u"text-align: left"_s);
    button->setMinimumWidth(0);
    button->setCursor(Qt::PointingHandCursor);
    button->setObjectName(u"openAd"_s);
    button->setAccessibleName(tr("Open ad: %1").arg(body));
    connect(button, &QPushButton::clicked, this, [this] { m_viewing.openAd(); });
    return button;
}

QLabel* AdWindowView::progress()
{
    auto* const label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    label->setFont(moneyFont());
    label->setObjectName(u"progress"_s);
    // So that nothing moves when it takes the place of the seconds.
    label->setMinimumWidth(label->fontMetrics().horizontalAdvance(tr("Paid")));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

QLabel* AdWindowView::earnings()
{
    auto* const label = new QLabel(Money::formatApproximate(m_viewing.earningsCents()));
    label->setTextFormat(Qt::PlainText);
    label->setFont(moneyFont());
    label->setToolTip(Money::preciseDescription(m_viewing.earningsCents()));
    label->setObjectName(u"earnings"_s);
    return label;
}

QToolButton* AdWindowView::closeButton()
{
    auto* const button = new QToolButton;
    button->setText(u"\u2715"_s);
    button->setAutoRaise(true);
    button->setFixedSize(kCloseSlot, kCloseSlot);
    button->setObjectName(u"close"_s);
    connect(button, &QToolButton::clicked, this, [this] { m_viewing.dismiss(); });
    return button;
}

void AdWindowView::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const auto body = m_ad->fontMetrics().elidedText(m_viewing.ad().body.simplified(), Qt::ElideRight, m_ad->width());
    m_ad->setText(withoutShortcuts(body));
}

/// The viewing tells before it changes; what it is then is known when the loop turns again.
void AdWindowView::scheduleRefresh()
{
    if (std::exchange(m_isRefreshScheduled, true))
        return;
    QMetaObject::invokeMethod(this, &AdWindowView::refresh, Qt::QueuedConnection);
}

void AdWindowView::refresh()
{
    m_isRefreshScheduled = false;
    const bool isPaid = m_viewing.completed();
    const auto seconds = QString::number(m_viewing.remaining());
    m_progress->setText(isPaid ? tr("Paid") : tr("%1 s").arg(seconds));
    m_progress->setAccessibleName(isPaid ? tr("Paid") : tr("Ad time remaining: %1 seconds").arg(seconds));
    if (isPaid) {
        m_progress->setPalette(paid(palette()));
        m_earnings->setPalette(paid(palette()));
    }
    m_close->setToolTip(isPaid ? tr("Close") : tr("Dismiss without earning"));
    m_close->setAccessibleName(isPaid ? tr("Close ad") : tr("Dismiss ad without earning"));
}

} // namespace orvella
