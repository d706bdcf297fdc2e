#include "platform/linux/windows/X11Presses.h"

#include "platform/linux/x11/X11Reply.h"

#include <QCoreApplication>
#include <QCursor>

#include <utility>

namespace orvella {

namespace {

/// The number of the XInput extension on this connection; 0 where it has none that reports raw presses.
quint8 inputExtension(const InputLibrary& input, xcb_connection_t* connection)
{
    if (!input.isReady())
        return 0;
    const auto* const extension = xcb_get_extension_data(connection, input.id);
    if (extension == nullptr || extension->present == 0)
        return 0;
    // Qt has said already what it understands, but not if it was told to do without. From version 2.1 on, presses are
    // reported while another program has the pointer to itself, too. An error means that a newer one is agreed on.
    const X11Reply<xcb_input_xi_query_version_reply_t> version(
        input.queryVersionReply(connection, input.queryVersion(connection, 2, 2), nullptr));
    return version && version->major_version < 2 ? quint8 {0} : extension->major_opcode;
}

bool isButton(uint32_t detail)
{
    constexpr uint32_t kFirstWheelButton = 4;
    constexpr uint32_t kLastWheelButton = 7;
    return detail < kFirstWheelButton || detail > kLastWheelButton;
}

} // namespace

struct X11Presses::Listeners {
    /// Null once it is gone.
    X11Presses* presses = nullptr;
    std::map<int, std::function<void(QPoint)>> functions;
    int next = 0;
};

class X11Presses::Watch final : public PressWatch {
public:
    Watch(std::shared_ptr<Listeners> listeners, std::function<void(QPoint)> pressed)
        : m_listeners(std::move(listeners))
        , m_id(m_listeners->next++)
    {
        m_listeners->functions.emplace(m_id, std::move(pressed));
        m_listeners->presses->select();
    }

    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    ~Watch() override
    {
        m_listeners->functions.erase(m_id);
        if (m_listeners->presses != nullptr)
            m_listeners->presses->select();
    }

private:
    std::shared_ptr<Listeners> m_listeners;
    int m_id;
};

X11Presses::X11Presses(const X11Display& display)
    : m_display(display)
    , m_listeners(std::make_shared<Listeners>())
{
    m_listeners->presses = this;
    QCoreApplication::instance()->installNativeEventFilter(this);
}

X11Presses::~X11Presses()
{
    m_listeners->presses = nullptr;
    m_listeners->functions.clear();
    select();
}

std::unique_ptr<PressWatch> X11Presses::watch(std::function<void(QPoint)> pressed)
{
    return std::make_unique<Watch>(m_listeners, std::move(pressed));
}

bool X11Presses::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* const event = static_cast<const xcb_ge_generic_event_t*>(message);
    if (!m_isSelected || event->response_type != XCB_GE_GENERIC || event->extension != m_extension
        || event->event_type != XCB_INPUT_RAW_BUTTON_PRESS)
        return false;
    const auto* const press = static_cast<const xcb_input_raw_button_press_event_t*>(message);
    if (!isButton(press->detail))
        return false;
    // A listener may end itself or another one inside its call.
    const auto listeners = m_listeners;
    for (const auto& [id, function] : std::map(listeners->functions)) {
        if (listeners->functions.contains(id))
            function(QCursor::pos());
    }
    return false;
}

void X11Presses::select()
{
    const bool isWanted = !m_listeners->functions.empty();
    if (isWanted && !m_input)
        m_extension = inputExtension(m_input.emplace(), m_display.connection);
    if (m_extension == 0 || std::exchange(m_isSelected, isWanted) == isWanted)
        return;
    struct {
        xcb_input_event_mask_t head;
        uint32_t events;
    } const mask {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, isWanted ? uint32_t {XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS} : 0};
    // Qt's own choice on this window is for other devices, so neither replaces the other's.
    m_input->selectEvents(m_display.connection, m_display.root, 1, &mask.head);
    xcb_flush(m_display.connection);
}

} // namespace orvella
