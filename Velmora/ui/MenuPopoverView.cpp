#include "ui/MenuPopoverView.h"

#include "base/WebAddress.h"
#include "core/AppState.h"
#include "platform/Browser.h"
#include "ui/AssignToggles.h"
#include "ui/BalancesView.h"
#include "ui/CategoryConsent.h"
#include "ui/Compose.h"
#include "ui/Money.h"
#include "ui/RefreshOnChange.h"
#include "ui/ShownText.h"
#include "ui/controls/Button.h"
#include "ui/controls/LinkButton.h"
#include "ui/controls/Panel.h"
#include "ui/controls/ScrollView.h"
#include "ui/controls/SwitchRow.h"
#include "ui/controls/TextLabel.h"

#include <QEvent>

#include <utility>

namespace orvella {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kSize(340, 540);
constexpr int kPadding = 16;
constexpr int kSpacing = 16;
constexpr int kCardPadding = 12;
constexpr int kCardRadius = 8;

/// How long the switches are deaf after an ad on offer has moved them away under the pointer.
constexpr auto kDeafness = 300ms;

TextLabel* named(const QString& name, TextLabel* label)
{
    label->setObjectName(name);
    return label;
}

} // namespace

MenuPopoverView::MenuPopoverView(const Look& look, AppState& state, const Platform& platform, Actions actions)
    : m_look(look)
    , m_state(state)
    , m_platform(platform)
    , m_actions(std::move(actions))
    , m_errorLine(new Conditional([this] { return errorLine(); }))
    , m_content(content())
    , m_scroll(new ScrollView(look, platform.clock, m_content))
{
    setObjectName(u"menuPopover"_s);
    setFixedSize(kSize);
    setLayout(column(0, {m_scroll, m_errorLine, FlexibleSpace {}}));
    refreshWhileShown(*this, m_state, [this] { refresh(); });
    refresh();
}

QWidget* MenuPopoverView::content()
{
    return group(padded({kPadding, kPadding, kPadding, kPadding},
        column(kSpacing,
            {
                header(),
                m_balances = new BalancesView(m_look, m_state, m_platform.locale),
                m_offer = new Conditional([this] { return offer(); }),
                autoOpen(),
                anonymous(),
                signalsConsent(),
                age(),
                notes(),
                openAtLogin(),
                startupWindow(),
                updates(),
                m_link = new Conditional([this] { return link(); }),
            })));
}

QLayout* MenuPopoverView::header()
{
    m_linked = named(u"linked"_s, new TextLabel(m_look, TypeStyle::caption, Tone::secondary));
    m_earned = named(u"earned"_s, new TextLabel(m_look, TypeStyle::title2));
    auto* const earned = label(m_look, TypeStyle::caption2, tr("earned"), Tone::secondary);
    m_earned->setAlignment(Qt::AlignRight);
    earned->setAlignment(Qt::AlignRight);
    return row(0,
        {
            group(column(4, {label(m_look, TypeStyle::headline, u"Orvella"_s), m_linked})),
            FlexibleSpace {},
            group(column(2, {m_earned, earned})),
        });
}

QWidget* MenuPopoverView::offer()
{
    m_advertiser = named(u"advertiser"_s, new TextLabel(m_look, TypeStyle::subheadline));
    m_body = named(u"adBody"_s, new TextLabel(m_look, TypeStyle::callout, Tone::primary, TextLabel::Lines::three));
    auto* const open = new Button(m_look, Button::Kind::prominent, tr("Open ad"));
    open->setObjectName(u"openAd"_s);
    open->setAutoDefault(true);
    connect(open, &QPushButton::clicked, this, [this] { m_actions.showAd(); });

    auto* const card = new Panel(m_look, &Theme::card, kCardRadius);
    card->setObjectName(u"offer"_s);
    card->setLayout(padded(
        {kCardPadding, kCardPadding, kCardPadding, kCardPadding}, column(8, {m_advertiser, m_body, leading(open)})));
    return card;
}

QWidget* MenuPopoverView::autoOpen()
{
    return m_autoOpenAds = toggle(
               u"autoOpenAds"_s, tr("Auto open ads"),
               tr("Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually."),
               [this] { return m_state.autoOpenAds(); }, [this](bool isOn) { m_state.autoOpenAds = isOn; });
}

QWidget* MenuPopoverView::anonymous()
{
    return m_anonymousMode = toggle(
               u"anonymousMode"_s, tr("Anonymous mode"),
               tr("Sends no app-category signals. You can still earn, but ads are matched with less context."),
               [this] { return m_state.anonymousMode(); }, [this](bool isOn) { m_state.anonymousMode = isOn; });
}

QWidget* MenuPopoverView::signalsConsent()
{
    return m_appSignalConsent = toggle(
               u"appSignalConsent"_s, tr("App category signals"), {}, [this] { return m_state.appSignalConsent(); },
               [this](bool isOn) { m_state.appSignalConsent = isOn; });
}

QWidget* MenuPopoverView::age()
{
    return m_ageConfirmed = toggle(
               u"ageConfirmed"_s, tr("I am 18 or older"),
               tr("Required before category signals and paid ad viewing are enabled."),
               [this] { return m_state.ageConfirmed(); }, [this](bool isOn) { m_state.ageConfirmed = isOn; });
}

QWidget* MenuPopoverView::notes()
{
    constexpr auto kAll = TextLabel::Lines::all;
    m_anonymousNote = named(u"anonymousNote"_s, new TextLabel(m_look, TypeStyle::caption, Tone::secondary, kAll));
    m_hintLine = new Conditional([this] {
        return m_hint = named(u"consentHint"_s, new TextLabel(m_look, TypeStyle::caption, Tone::secondary, kAll));
    });
    return group(column(4,
        {
            m_anonymousNote,
            label(m_look, TypeStyle::caption,
                tr("Advertisers never see your email, device id, raw app names, or open apps."), Tone::secondary, kAll),
            m_hintLine,
        }));
}

QWidget* MenuPopoverView::openAtLogin()
{
    return m_openAtLogin = toggle(
               u"openAtLogin"_s, tr("Open at login"), tr("Starts Orvella automatically when you log in to your Mac."),
               [this] { return m_state.launchAtLogin(); }, [this](bool isOn) { m_state.setLaunchAtLogin(isOn); });
}

QWidget* MenuPopoverView::startupWindow()
{
    return m_startupWindow = toggle(
               u"showLaunchWindow"_s, tr("Show startup window"),
               tr("Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off."),
               [this] { return m_state.showLaunchWindowAtStartup(); },
               [this](bool isOn) { m_state.showLaunchWindowAtStartup = isOn; });
}

QLayout* MenuPopoverView::updates()
{
    auto* const button = new Button(m_look, Button::Kind::plain, tr("Check for Updates..."));
    button->setObjectName(u"checkForUpdates"_s);
    button->setAutoDefault(true);
    button->setToolTip(tr("Checks Sparkle for the latest Orvella Mac update."));
    connect(button, &QPushButton::clicked, this, [this] { m_actions.checkForUpdates(); });
    return leading(button);
}

QWidget* MenuPopoverView::link()
{
    auto* const button = new LinkButton(m_look, tr("Link this Mac"));
    button->setObjectName(u"linkDevice"_s);
    connect(button, &QPushButton::clicked, this, [this] {
        const auto page = webAddress(m_state.verificationUri().value_or(QString()));
        if (page)
            m_platform.browser.open(*page);
    });
    return group(leading(button));
}

QWidget* MenuPopoverView::errorLine()
{
    m_error = named(u"error"_s, new TextLabel(m_look, TypeStyle::caption, Tone::red, TextLabel::Lines::two));
    m_error->setBreaksAnywhere();
    return group(padded({kPadding, kSpacing, kPadding, kPadding}, column(0, {m_error})));
}

SwitchRow* MenuPopoverView::toggle(const QString& name, const QString& text, const QString& help,
    std::function<bool()> value, std::function<void(bool)> assign)
{
    auto* const result = new SwitchRow(m_look, text);
    result->setObjectName(name);
    result->setToolTip(help);
    result->setAccessibleDescription(help);
    result->installEventFilter(this);
    assignToggles(*result, std::move(value), std::move(assign));
    return result;
}

bool MenuPopoverView::eventFilter(QObject* watched, QEvent* event)
{
    const bool isPress = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (isPress && m_offerMoved && m_platform.clock.now() - *m_offerMoved < kDeafness)
        return true;
    return QWidget::eventFilter(watched, event);
}

void MenuPopoverView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    refresh();
    m_offerMoved.reset();
    m_scroll->restart();
}

void MenuPopoverView::refresh()
{
    const auto controls = [this] { return std::pair(m_offer->isPresent(), m_link->isPresent()); };
    const auto before = controls();
    refreshHeader();
    m_balances->refresh();
    refreshOffer();
    refreshToggles();
    refreshNotes();
    refreshEnd();
    if (controls() != before)
        chainFocus();
}

void MenuPopoverView::refreshHeader()
{
    const auto lifetime = Money::displayedLifetimeCents(m_state.lifetimeCents(), m_state.lastEarnedCents());
    m_linked->setText(m_state.linked() ? tr("Linked") : tr("Link pending"));
    m_earned->setText(Money::formatDollars(lifetime, m_platform.locale));
}

void MenuPopoverView::refreshOffer()
{
    const auto& ad = m_state.availableAd();
    if (m_offer->isPresent() != ad.has_value() && isVisible())
        m_offerMoved = m_platform.clock.now();
    m_offer->setPresent(ad.has_value());
    if (!ad)
        return;
    m_advertiser->setText(shownText(ad->advertiserName));
    m_body->setText(shownText(ad->body));
}

/// What is built later comes last in the toolkit's order of the keyboard; the viewer's is that of the screen.
void MenuPopoverView::chainFocus()
{
    QWidget* before = nullptr;
    for (const auto& name : {u"openAd"_s, u"autoOpenAds"_s, u"anonymousMode"_s, u"appSignalConsent"_s,
             u"ageConfirmed"_s, u"openAtLogin"_s, u"showLaunchWindow"_s, u"checkForUpdates"_s, u"linkDevice"_s}) {
        auto* const control = findChild<QWidget*>(name);
        if (before && control)
            setTabOrder(before, control);
        if (control)
            before = control;
    }
}

void MenuPopoverView::refreshToggles()
{
    m_autoOpenAds->setChecked(m_state.autoOpenAds());
    m_anonymousMode->setChecked(m_state.anonymousMode());
    CategoryConsent::refresh(*m_appSignalConsent, m_state);
    m_ageConfirmed->setChecked(m_state.ageConfirmed());
    m_openAtLogin->setChecked(m_state.launchAtLogin());
    m_startupWindow->setChecked(m_state.showLaunchWindowAtStartup());
}

void MenuPopoverView::refreshNotes()
{
    m_anonymousNote->setText(m_state.anonymousMode() ? tr("Anonymous mode sends no app categories.")
                                                     : tr("Category signals send broad labels only."));
    const auto hint = CategoryConsent::hint(m_state);
    m_hintLine->setPresent(!hint.isEmpty());
    if (m_hintLine->isPresent())
        m_hint->setText(hint);
}

void MenuPopoverView::refreshEnd()
{
    const auto page = webAddress(m_state.verificationUri().value_or(QString()));
    m_link->setPresent(page.has_value() && !m_state.linked());

    const auto& error = m_state.lastError();
    m_errorLine->setPresent(error.has_value());
    if (error)
        m_error->setText(shownText(*error));
    // The error line stays below whatever scrolls and brings the room above it.
    m_content->layout()->setContentsMargins(kPadding, kPadding, kPadding, error ? 0 : kPadding);
}

} // namespace orvella
