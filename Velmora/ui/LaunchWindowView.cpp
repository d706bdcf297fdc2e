#include "ui/LaunchWindowView.h"

#include "api/ServiceAddress.h"
#include "base/WebAddress.h"
#include "core/AppState.h"
#include "platform/Browser.h"
#include "ui/AssignToggles.h"
#include "ui/CategoryConsent.h"
#include "ui/Compose.h"
#include "ui/Mark.h"
#include "ui/RefreshOnChange.h"
#include "ui/controls/Button.h"
#include "ui/controls/CheckBox.h"
#include "ui/controls/Panel.h"
#include "ui/controls/SymbolView.h"
#include "ui/controls/TextLabel.h"

#include <QShortcut>

#include <algorithm>
#include <utility>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize kSize(560, 620);
constexpr int kPadding = 24;
constexpr int kSpacing = 16;
constexpr int kLeastButton = 80;

} // namespace

LaunchWindowView::LaunchWindowView(const Look& look, AppState& state, Browser& browser, Actions actions)
    : m_look(look)
    , m_state(state)
    , m_browser(browser)
    , m_actions(std::move(actions))
{
    setLayout(padded({kPadding, kPadding, kPadding, kPadding},
        column(kSpacing,
            {
                header(),
                whereToLook(),
                placement(),
                divider(),
                adDelivery(),
                privacy(),
                startup(),
                FlexibleSpace {},
                buttons(),
            })));
    refreshWhileShown(*this, m_state, [this] { refresh(); });
    connect(&look, &Look::changed, this, &LaunchWindowView::fit);
    // Wherever the keyboard is in the window.
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        connect(new QShortcut(key, this), &QShortcut::activated, m_gotIt, &QPushButton::click);
    refresh();
    fit();
}

QLayout* LaunchWindowView::header()
{
    return row(12,
        {
            new Mark,
            group(column(4,
                {
                    label(m_look, TypeStyle::title2, tr("Orvella is running")),
                    label(m_look, TypeStyle::callout, tr("The app lives in your Mac menu bar and opens at login."),
                        Tone::secondary),
                })),
            FlexibleSpace {},
        });
}

QLayout* LaunchWindowView::whereToLook()
{
    return column(10,
        {
            pointer(Symbol::menuBar, tr("Look for $ in the top bar.")),
            pointer(Symbol::coin, tr("When it changes to green $ AD, an ad is available.")),
            pointer(Symbol::bolt, tr("Click $ to open the ad. Auto open still works even if macOS hides it.")),
        });
}

QWidget* LaunchWindowView::placement()
{
    return label(m_look, TypeStyle::callout,
        tr("Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display change, "
           "reopening Orvella restores the placement."),
        Tone::primary, TextLabel::Lines::all);
}

QWidget* LaunchWindowView::divider()
{
    auto* const line = new Panel(m_look, &Theme::divider, 0);
    line->setFixedHeight(1);
    return line;
}

QWidget* LaunchWindowView::adDelivery()
{
    m_autoOpenAds = box(
        u"autoOpenAds"_s, tr("Auto open ads when available"),
        tr("When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When disabled, "
           "the menu bar icon turns green and waits for your click."),
        [this] { return m_state.autoOpenAds(); }, [this](bool isOn) { m_state.autoOpenAds = isOn; });
    return group(column(10,
        {
            label(m_look, TypeStyle::headline, tr("Ad delivery")),
            m_autoOpenAds,
            note(tr("Manual mode still works: the $ icon changes when an ad is ready.")),
        }));
}

QWidget* LaunchWindowView::privacy()
{
    m_anonymousMode = box(
        u"anonymousMode"_s, tr("Anonymous mode"),
        tr("Anonymous mode sends no app-category signals. You can still see ads, but matching is less personalized."),
        [this] { return m_state.anonymousMode(); }, [this](bool isOn) { m_state.anonymousMode = isOn; });
    m_appSignalConsent = box(
        u"appSignalConsent"_s, tr("Use app category signals"), {}, [this] { return m_state.appSignalConsent(); },
        [this](bool isOn) { m_state.appSignalConsent = isOn; });
    m_hintLine = new Conditional([this] {
        m_hint = new TextLabel(m_look, TypeStyle::caption, Tone::secondary, TextLabel::Lines::all);
        m_hint->setObjectName(u"consentHint"_s);
        return m_hint;
    });
    m_ageConfirmed = box(
        u"ageConfirmed"_s, tr("I am 18 or older"),
        tr("Ads and earnings are only available for viewers who confirm they are at least 18."),
        [this] { return m_state.ageConfirmed(); }, [this](bool isOn) { m_state.ageConfirmed = isOn; });
    m_categories = new TextLabel(m_look, TypeStyle::caption, Tone::secondary, TextLabel::Lines::all);
    m_categories->setObjectName(u"categoriesNote"_s);
    return group(column(10,
        {
            label(m_look, TypeStyle::headline, tr("Privacy")),
            m_anonymousMode,
            m_appSignalConsent,
            m_hintLine,
            m_ageConfirmed,
            m_categories,
        }));
}

QWidget* LaunchWindowView::startup()
{
    m_showAtStartup = box(
        u"showLaunchWindow"_s, tr("Show this window when Orvella starts"),
        tr("Controls only this startup window. Orvella still runs in the menu bar when this is off."),
        [this] { return m_state.showLaunchWindowAtStartup(); },
        [this](bool isOn) { m_state.showLaunchWindowAtStartup = isOn; });
    return group(column(8,
        {
            m_showAtStartup,
            note(tr("Turning this off only hides this startup window. Orvella will still open in the menu bar and "
                    "keep checking for ads.")),
        }));
}

QLayout* LaunchWindowView::buttons()
{
    auto* const dashboard = new Button(m_look, Button::Kind::plain, tr("Open dashboard"));
    dashboard->setObjectName(u"openDashboard"_s);
    connect(dashboard, &QPushButton::clicked, this, &LaunchWindowView::openDashboard);
    auto* const quit = new Button(m_look, Button::Kind::plain, tr("Quit Orvella"));
    quit->setObjectName(u"quit"_s);
    connect(quit, &QPushButton::clicked, this, [this] { m_actions.quit(); });
    m_gotIt = new Button(m_look, Button::Kind::prominent, tr("Got it"));
    m_gotIt->setObjectName(u"gotIt"_s);
    m_gotIt->setLeastWidth(kLeastButton);
    connect(m_gotIt, &QPushButton::clicked, this, [this] { m_actions.close(); });
    return row(0, {dashboard, FixedSpace {8}, quit, FlexibleSpace {}, m_gotIt});
}

QLayout* LaunchWindowView::pointer(Symbol symbol, const QString& text)
{
    return row(
        0, {new SymbolView(m_look, symbol), FixedSpace {8}, label(m_look, TypeStyle::callout, text), FlexibleSpace {}});
}

CheckBox* LaunchWindowView::box(const QString& name, const QString& text, const QString& help,
    std::function<bool()> value, std::function<void(bool)> assign)
{
    auto* const result = new CheckBox(m_look, text);
    result->setObjectName(name);
    result->setToolTip(help);
    result->setAccessibleDescription(help);
    assignToggles(*result, std::move(value), std::move(assign));
    return result;
}

QWidget* LaunchWindowView::note(const QString& text)
{
    return label(m_look, TypeStyle::caption, text, Tone::secondary, TextLabel::Lines::all);
}

void LaunchWindowView::openDashboard()
{
    const auto page = ServiceAddress::viewerPage(m_state.api().baseURL());
    if (const auto address = webAddress(page.toString(QUrl::FullyEncoded)))
        m_browser.open(*address);
}

void LaunchWindowView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    refresh();
}

void LaunchWindowView::refresh()
{
    m_autoOpenAds->setChecked(m_state.autoOpenAds());
    m_anonymousMode->setChecked(m_state.anonymousMode());
    CategoryConsent::refresh(*m_appSignalConsent, m_state);
    const auto hint = CategoryConsent::hint(m_state);
    m_hintLine->setPresent(!hint.isEmpty());
    if (m_hintLine->isPresent())
        m_hint->setText(hint);
    m_ageConfirmed->setChecked(m_state.ageConfirmed());
    m_categories->setText(m_state.anonymousMode()
            ? tr("Anonymous mode sends no app categories.")
            : tr("We send broad categories like Developer tools or Design tools, never raw app names."));
    m_showAtStartup->setChecked(m_state.showLaunchWindowAtStartup());
}

/// Larger text grows the window in height.
void LaunchWindowView::fit()
{
    setFixedSize(kSize.width(), std::max(kSize.height(), layout()->heightForWidth(kSize.width())));
}

} // namespace orvella
