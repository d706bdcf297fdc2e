#pragma once

#include "ui/look/Look.h"
#include "ui/look/Symbol.h"

#include <QWidget>

#include <functional>

namespace orvella {

class AppState;
class Browser;
class Button;
class CheckBox;
class Conditional;
class TextLabel;

/// The introduction: where the program is, the settings that matter at first, and the ways on.
class LaunchWindowView final : public QWidget {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> close;
        std::function<void()> quit;
    };

    LaunchWindowView(const Look& look, AppState& state, Browser& browser, Actions actions);

protected:
    void showEvent(QShowEvent* event) override;

private:
    // In the order of the screen.
    QLayout* header();
    QLayout* whereToLook();
    QWidget* placement();
    QWidget* divider();
    QWidget* adDelivery();
    QWidget* privacy();
    QWidget* startup();
    QLayout* buttons();

    QLayout* pointer(Symbol symbol, const QString& text);
    CheckBox* box(const QString& name, const QString& text, const QString& help, std::function<bool()> value,
        std::function<void(bool)> assign);
    QWidget* note(const QString& text);

    void openDashboard();
    void refresh();
    void fit();

    const Look& m_look;
    AppState& m_state;
    Browser& m_browser;
    Actions m_actions;

    CheckBox* m_autoOpenAds = nullptr;
    CheckBox* m_anonymousMode = nullptr;
    CheckBox* m_appSignalConsent = nullptr;
    CheckBox* m_ageConfirmed = nullptr;
    CheckBox* m_showAtStartup = nullptr;
    Conditional* m_hintLine = nullptr;
    TextLabel* m_hint = nullptr;
    TextLabel* m_categories = nullptr;
    Button* m_gotIt = nullptr;
};

} // namespace orvella
