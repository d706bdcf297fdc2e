#pragma once

#include "ui/controls/Control.h"

#include <QPushButton>

namespace orvella {

/// The ad's text on one line, which leads to the advertiser. As tall a target as the row it stands in.
class AdTextButton final : public Control<QPushButton> {
    Q_OBJECT

public:
    /// Whatever the text holds is shown as it stands. `targetHeight` is the height of the row in points.
    AdTextButton(const Look& look, QString body, int targetHeight);

    [[nodiscard]] const QString& body() const { return m_body; }

    [[nodiscard]] QMargins reach() const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, sizeHint().height()}; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_body;
    int m_targetHeight;
};

} // namespace orvella
