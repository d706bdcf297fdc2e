#pragma once

#include "platform/linux/X11Display.h"

#include <QAbstractNativeEventFilter>
#include <QPoint>

#include <functional>

namespace orvella {

/// Hears of every press of a button of the pointer on an X11 display, whichever window it goes to, and takes it away
/// from none. The wheel is no button.
///
/// In a Wayland session, presses over windows that are not X11 ones are not reported.
class X11Presses final : public QAbstractNativeEventFilter {
public:
    explicit X11Presses(const X11Display& display);
    X11Presses(const X11Presses&) = delete;
    X11Presses& operator=(const X11Presses&) = delete;
    ~X11Presses() override;

    /// An empty function ends it. The server reports nothing to the program while nobody listens.
    void watch(std::function<void(QPoint)> pressed);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    void select(quint32 events);

    X11Display m_display;
    quint8 m_extension = 0;
    bool m_isSelected = false;
    std::function<void(QPoint)> m_pressed;
};

} // namespace orvella
