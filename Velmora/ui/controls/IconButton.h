#pragma once

#include "ui/controls/Control.h"
#include "ui/look/Symbol.h"

#include <QPushButton>

namespace orvella {

/// A symbol in a slot of 16 points that is as tall a target as the row it stands in.
class IconButton final : public Control<QPushButton> {
    Q_OBJECT

public:
    /// `targetHeight` is the height of the row in points.
    IconButton(const Look& look, Symbol symbol, int targetHeight);

    /// Whether what it opens is open: then it looks as it does under the pointer.
    void setOpen(bool isOpen);

    [[nodiscard]] QMargins reach() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    Symbol m_symbol;
    int m_targetHeight;
    bool m_isOpen = false;
};

} // namespace orvella
