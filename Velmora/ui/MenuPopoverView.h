#pragma once

#include "base/Clock.h"
#include "platform/Platform.h"
#include "ui/look/Look.h"

#include <QWidget>

#include <functional>

namespace orvella {

class AppState;
class BalancesView;
class Conditional;
class LinkButton;
class ScrollView;
class SwitchRow;
class TextLabel;

/// What the viewer sees on a click when no ad is waiting: the wallet, the ad on offer, the settings.
class MenuPopoverView final : public QWidget {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> showAd;
        std::function<void()> checkForUpdates;
    };

    MenuPopoverView(const Look& look, AppState& state, const Platform& platform, Actions actions);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    // In the order of the screen.
    QWidget* content();
    QLayout* header();
    QWidget* offer();
    QWidget* autoOpen();
    QWidget* anonymous();
    QWidget* signalsConsent();
    QWidget* age();
    QWidget* notes();
    QWidget* openAtLogin();
    QWidget* startupWindow();
    QLayout* updates();
    QWidget* link();
    QWidget* errorLine();

    SwitchRow* toggle(const QString& name, const QString& text, const QString& help, std::function<bool()> value,
        std::function<void(bool)> assign);

    void refresh();
    void refreshHeader();
    void refreshOffer();
    void chainFocus();
    void refreshToggles();
    void refreshNotes();
    void refreshEnd();

    const Look& m_look;
    AppState& m_state;
    Platform m_platform;
    Actions m_actions;

    TextLabel* m_linked = nullptr;
    TextLabel* m_earned = nullptr;
    BalancesView* m_balances = nullptr;
    TextLabel* m_advertiser = nullptr;
    TextLabel* m_body = nullptr;
    SwitchRow* m_autoOpenAds = nullptr;
    SwitchRow* m_anonymousMode = nullptr;
    SwitchRow* m_appSignalConsent = nullptr;
    SwitchRow* m_ageConfirmed = nullptr;
    SwitchRow* m_openAtLogin = nullptr;
    SwitchRow* m_startupWindow = nullptr;
    TextLabel* m_anonymousNote = nullptr;
    TextLabel* m_hint = nullptr;
    TextLabel* m_error = nullptr;
    Conditional* m_offer = nullptr;
    Conditional* m_hintLine = nullptr;
    Conditional* m_link = nullptr;
    Conditional* m_errorLine = nullptr;
    QWidget* m_content = nullptr;
    ScrollView* m_scroll = nullptr;
    /// When the ad on offer came or went, while the view was shown.
    std::optional<Instant> m_offerMoved;
};

} // namespace orvella
