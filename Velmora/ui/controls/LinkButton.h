#pragma once

#include "ui/controls/Control.h"

#include <QPushButton>

namespace orvella {

/// A text that leads to a web page.
class LinkButton final : public Control<QPushButton> {
    Q_OBJECT

public:
    LinkButton(const Look& look, const QString& text);

    [[nodiscard]] QMargins reach() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvella
