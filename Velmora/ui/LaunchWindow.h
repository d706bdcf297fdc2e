#pragma once

#include "ui/look/Look.h"

#include <QWidget>

namespace orvella {

/// A titled window around one view, as large as the view wants to be.
class LaunchWindow final : public QWidget {
    Q_OBJECT

public:
    LaunchWindow(const Look& look, QWidget* view);

    /// Puts it into the middle of the screen that the viewer is at.
    void centre();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& m_look;
};

} // namespace orvella
