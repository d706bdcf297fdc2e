#pragma once

#include "updates/UpdateFlow.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;

namespace orvella {

/// The small window that an update is looked for and installed in. Closing it ends it, and with it what it does.
///
/// It has no default button: a Return that was meant for another program must not install anything.
class UpdateWindow final : public QWidget {
    Q_OBJECT

public:
    UpdateWindow(QDBusConnection bus, Clock& clock);

    /// Looks again where an earlier look has come to an end that may be another one by now.
    void checkAgain();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // In the order of the screen.
    QWidget* headline();
    QWidget* detail();
    QWidget* progress();
    QLayout* buttons();

    void refresh();
    void refreshProgress();

    UpdateFlow m_flow;
    QLabel* m_headline = nullptr;
    QLabel* m_detail = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_install = nullptr;
    QPushButton* m_close = nullptr;
};

} // namespace orvella
