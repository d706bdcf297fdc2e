#include "platform/linux/windows/X11WindowSystem.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/shape.h>

#include <QRegion>
#include <QWindow>

#include <cmath>
#include <vector>

namespace orvella {

X11WindowSystem::X11WindowSystem(const X11Display& display)
    : m_display(display)
    , m_hints(display.connection)
    , m_activation(display, m_hints)
    , m_presses(display)
{
}

bool X11WindowSystem::isCompositing() const
{
    if (!m_hints.isValid())
        return false;
    // Who manages the composition of the screen owns this selection.
    const auto question = xcb_get_selection_owner(m_display.connection, m_hints->_NET_WM_CM_Sn[m_display.screen]);
    const X11Reply<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(m_display.connection, question, nullptr));
    return answer && answer->owner != XCB_WINDOW_NONE;
}

void X11WindowSystem::setInputRegion(QWindow& window, const QRegion& region)
{
    const auto scale = window.devicePixelRatio();
    const auto pixels = [scale](int points) { return static_cast<int>(std::lround(points * scale)); };
    std::vector<xcb_rectangle_t> rectangles;
    for (const auto& part : region) {
        const int left = pixels(part.left());
        const int top = pixels(part.top());
        rectangles.push_back({static_cast<int16_t>(left), static_cast<int16_t>(top),
            static_cast<uint16_t>(pixels(part.left() + part.width()) - left),
            static_cast<uint16_t>(pixels(part.top() + part.height()) - top)});
    }
    xcb_shape_rectangles(m_display.connection, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
        static_cast<xcb_window_t>(window.winId()), 0, 0, static_cast<uint32_t>(rectangles.size()), rectangles.data());
    xcb_flush(m_display.connection);
}

} // namespace orvella
