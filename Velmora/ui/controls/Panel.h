#pragma once

#include "ui/look/Look.h"

#include <QWidget>

namespace orvella {

/// An area in one colour of the theme: a card, or a line between two parts.
class Panel final : public QWidget {
    Q_OBJECT

public:
    /// `fill` is the colour, `radius` that of the corners in points.
    Panel(const Look& look, QColor Theme::* fill, int radius);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const Look& m_look;
    QColor Theme::* m_fill;
    int m_radius;
};

} // namespace orvella
