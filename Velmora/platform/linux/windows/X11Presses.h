#pragma once

#include "platform/WindowSystem.h"
#include "platform/linux/windows/InputLibrary.h"
#include "platform/linux/x11/X11Display.h"

#include <QAbstractNativeEventFilter>
#include <QPoint>

#include <functional>
#include <map>
#include <memory>
#include <optional>

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

    /// The server reports nothing to the program while nobody listens.
    [[nodiscard]] std::unique_ptr<PressWatch> watch(std::function<void(QPoint)> pressed);

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

private:
    /// Survives in the watches, which may outlive this object.
    struct Listeners;
    class Watch;

    void select();

    X11Display m_display;
    /// Nothing before somebody listens.
    std::optional<InputLibrary> m_input;
    /// 0 where there is none.
    quint8 m_extension = 0;
    bool m_isSelected = false;
    std::shared_ptr<Listeners> m_listeners;
};

} // namespace orvella
