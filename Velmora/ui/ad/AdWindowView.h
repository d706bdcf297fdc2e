#pragma once

#include <QWidget>

class QLabel;
class QPushButton;
class QToolButton;

namespace orvella {

class AdViewing;

/// The row that shows one viewing: the ad's text, the seconds left or "Paid", the earnings, a button to close.
class AdWindowView final : public QWidget {
    Q_OBJECT

public:
    explicit AdWindowView(AdViewing& viewing);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    QPushButton* adButton();
    QLabel* progress();
    QLabel* earnings();
    QToolButton* closeButton();
    void scheduleRefresh();
    void refresh();

    AdViewing& m_viewing;
    QPushButton* m_ad;
    QLabel* m_progress;
    QLabel* m_earnings;
    QToolButton* m_close;
    bool m_isRefreshScheduled = false;
};

} // namespace orvella
