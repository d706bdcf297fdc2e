#pragma once

#include "base/Clock.h"
#include "ui/look/Look.h"

#include <QScrollArea>

namespace orvella {

class OverlayScrollBar;

/// Shows content that may be taller than its place: it scrolls, and fades where there is more.
class ScrollView final : public QScrollArea {
    Q_OBJECT

public:
    ScrollView(const Look& look, Clock& clock, QWidget* content);

    /// Goes to the top, and lets the viewer see whether there is more.
    void restart();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class Fade;

    void arrange();

    OverlayScrollBar* m_bar;
    Fade* m_fade;
};

} // namespace orvella
