#pragma once

#include "platform/linux/x11/X11Display.h"
#include "platform/linux/x11/X11Hints.h"

#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QWindow>

namespace orvella {

/// Gives a window the keyboard after something that the X server has not seen, such as a click that a panel reported.
///
/// A window manager keeps a window from taking the keyboard unless it was asked for after the last input to the window
/// that has it. So the server is asked for its present time, and the request says that the viewer wants it directly.
class X11Activation final : public QAbstractNativeEventFilter {
public:
    /// `hints` live longer than this.
    X11Activation(const X11Display& display, X11Hints& hints);

    /// Also right after the window was shown, before it is there. The last request counts.
    void activate(QWindow& window);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    void request(quint32 time);

    X11Display m_display;
    X11Hints& m_hints;
    /// None before the first request.
    quint32 m_timeProperty = 0;
    /// Waits for the server's time.
    QPointer<QWindow> m_window;
    quint32 m_windowId = 0;
};

} // namespace orvella
