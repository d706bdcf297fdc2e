#pragma once

#include "ui/controls/Control.h"

#include <QPushButton>

namespace orvella {

/// A push button with a text, 28 points high.
class Button final : public Control<QPushButton> {
    Q_OBJECT

public:
    enum class Kind { plain, prominent };

    Button(const Look& look, Kind kind, const QString& text);

    /// At least this wide, in points.
    void setLeastWidth(int points);

    [[nodiscard]] QMargins reach() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] TypeStyle style() const;
    [[nodiscard]] QColor face() const;

    Kind m_kind;
    int m_leastWidth = 0;
};

} // namespace orvella
