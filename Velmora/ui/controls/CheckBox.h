#pragma once

#include "ui/controls/Control.h"

#include <QCheckBox>

namespace orvella {

/// A box to tick, with its text after it. The whole line is its target.
class CheckBox final : public Control<QCheckBox> {
    Q_OBJECT

public:
    CheckBox(const Look& look, const QString& text);

    [[nodiscard]] QMargins reach() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

private:
    void paintBox(QPainter& painter, const QRectF& box) const;
};

} // namespace orvella
