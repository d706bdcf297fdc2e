#include "ui/BalancesView.h"

#include "core/AppState.h"
#include "ui/Compose.h"
#include "ui/Money.h"
#include "ui/controls/TextLabel.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

BalancesView::BalancesView(const Look& look, const AppState& state, const ViewerLocale& locale)
    : m_look(look)
    , m_state(state)
    , m_locale(locale)
    , m_paidOutLine(new Conditional([this] { return line(u"paidOut"_s, tr("Paid out"), m_paidOut); }))
    , m_lastAdLine(new Conditional([this] { return line(u"lastAd"_s, tr("Last ad"), m_lastAd); }))
{
    setLayout(column(10,
        {
            line(u"available"_s, tr("Available"), m_available),
            line(u"pending"_s, tr("Pending"), m_pending),
            line(u"lifetime"_s, tr("Lifetime"), m_lifetime),
            m_paidOutLine,
            m_lastAdLine,
        }));
}

void BalancesView::refresh()
{
    const auto dollars = [this](qint64 cents) { return Money::formatDollars(cents, m_locale); };
    const auto& last = m_state.lastEarnedCents();
    m_available->setText(dollars(m_state.availableCents()));
    m_pending->setText(dollars(m_state.pendingCents()));
    m_lifetime->setText(dollars(Money::displayedLifetimeCents(m_state.lifetimeCents(), last)));
    m_paidOutLine->setPresent(m_state.paidCents() >= 1);
    if (m_paidOutLine->isPresent())
        m_paidOut->setText(dollars(m_state.paidCents()));
    m_lastAdLine->setPresent(last.has_value());
    if (last) {
        m_lastAd->setText(Money::formatApproximate(*last));
        m_lastAdLine->setToolTip(Money::preciseDescription(*last));
        m_lastAd->setAccessibleDescription(m_lastAdLine->toolTip());
    }
}

QWidget* BalancesView::line(const QString& name, const QString& text, TextLabel*& value)
{
    value = new TextLabel(m_look, TypeStyle::balance);
    value->setObjectName(name);
    auto* const title = label(m_look, TypeStyle::callout, text, Tone::secondary);
    title->setBuddy(value);
    return group(row(8, {title, FlexibleSpace {}, value}));
}

} // namespace orvella
