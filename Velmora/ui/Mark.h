#pragma once

#include <QWidget>

namespace orvella {

/// The program's mark, the same in every look.
class Mark final : public QWidget {
    Q_OBJECT

public:
    Mark();

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvella
