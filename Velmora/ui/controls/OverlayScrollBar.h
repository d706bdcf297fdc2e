#pragma once

#include "base/Clock.h"
#include "ui/look/Look.h"

#include <QScrollBar>

#include <optional>

namespace orvella {

/// A thin bar over what it scrolls. It takes no room, and is seen only while it is of use: while the content moves,
/// under the pointer, and for a moment when it is told to.
class OverlayScrollBar final : public QScrollBar {
    Q_OBJECT

public:
    OverlayScrollBar(const Look& look, Clock& clock, QWidget* parent);
    ~OverlayScrollBar() override;

    void showForAMoment();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& m_look;
    Clock& m_clock;
    std::optional<Clock::TimerId> m_moment;
};

} // namespace orvella
