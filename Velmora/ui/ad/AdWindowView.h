#pragma once

#include "ui/look/Look.h"

#include <QWidget>

namespace orvella {

class AdTextButton;
class AdViewing;
class Conditional;
class CountdownGauge;
class IconButton;
class TextLabel;

/// The row that shows one viewing: the ad's text, the seconds left or "Paid", the earnings, the reasons, a way out.
class AdWindowView final : public QWidget {
    Q_OBJECT

public:
    AdWindowView(const Look& look, AdViewing& viewing);

    /// What the reasons for the ad point at.
    [[nodiscard]] QWidget& informationButton();

    /// In points.
    static constexpr int kHeight = 44;

    /// The width that an ad's row needs in points, within its bounds: wide enough for "Paid", too, so that it stays as
    /// it is.
    [[nodiscard]] static int contentWidth(const Look& look, const AdViewing& viewing);

private:
    QWidget* adText();
    QWidget* gauge();
    QWidget* paid();
    QWidget* earnings();
    QWidget* information();
    QWidget* close();
    void refresh();
    void fit();

    const Look& m_look;
    AdViewing& m_viewing;
    Conditional* m_counting;
    Conditional* m_paid;
    CountdownGauge* m_gauge = nullptr;
    TextLabel* m_earnings = nullptr;
    IconButton* m_information = nullptr;
    IconButton* m_close = nullptr;
};

} // namespace orvella
