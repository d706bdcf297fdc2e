#pragma once

#include "ui/look/Look.h"

#include <QWidget>

namespace orvella {

class AppState;
class Conditional;
class TextLabel;
class ViewerLocale;

/// The wallet, a line for each balance, and what the last ad earned.
class BalancesView final : public QWidget {
    Q_OBJECT

public:
    BalancesView(const Look& look, const AppState& state, const ViewerLocale& locale);

    /// Shows the state as it is now.
    void refresh();

private:
    QWidget* line(const QString& name, const QString& text, TextLabel*& value);

    const Look& m_look;
    const AppState& m_state;
    const ViewerLocale& m_locale;
    TextLabel* m_available = nullptr;
    TextLabel* m_pending = nullptr;
    TextLabel* m_lifetime = nullptr;
    TextLabel* m_paidOut = nullptr;
    TextLabel* m_lastAd = nullptr;
    Conditional* m_paidOutLine = nullptr;
    Conditional* m_lastAdLine = nullptr;
};

} // namespace orvella
