#pragma once

#include "ui/controls/Control.h"
#include "ui/look/Glide.h"

#include <QCheckBox>

namespace orvella {

/// A label at the leading edge and its switch at the trailing one. The whole row is the target.
class SwitchRow final : public Control<QCheckBox> {
    Q_OBJECT

public:
    SwitchRow(const Look& look, const QString& text);

    [[nodiscard]] QMargins reach() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    [[nodiscard]] bool hitButton(const QPoint& position) const override { return rect().contains(position); }

private:
    void paintSwitch(QPainter& painter, const QRectF& box) const;

    /// 0 is off, 1 is on.
    Glide m_thumb;
};

} // namespace orvella
