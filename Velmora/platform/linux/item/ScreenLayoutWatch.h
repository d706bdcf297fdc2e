#pragma once

#include <QObject>

class QScreen;

namespace orvella {

/// Follows where the screens are and what the desktop's panels leave of them. Needs the QGuiApplication.
class ScreenLayoutWatch final : public QObject {
    Q_OBJECT

public:
    ScreenLayoutWatch();

Q_SIGNALS:
    void changed();

private:
    void follow(QScreen* screen);
};

} // namespace orvella
