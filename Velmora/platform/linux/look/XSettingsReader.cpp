#include "platform/linux/look/XSettingsReader.h"

#include "platform/linux/look/XSettings.h"
#include "platform/linux/x11/X11Atom.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11Reply.h"

#include <QCoreApplication>

#include <string>
#include <utility>

namespace orvella {

XSettingsReader::XSettingsReader(const X11Display& display)
    : m_display(display)
{
    const auto selection = "_XSETTINGS_S" + std::to_string(display.screen);
    const auto atoms = x11Atoms(display.connection, {selection, "_XSETTINGS_SETTINGS", "MANAGER"});
    m_selection = atoms[0];
    m_property = atoms[1];
    m_announcement = atoms[2];
    QCoreApplication::instance()->installNativeEventFilter(this);
    findManager();
}

bool XSettingsReader::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto type = static_cast<const xcb_generic_event_t*>(message)->response_type & 0x7F;
    if (type == XCB_PROPERTY_NOTIFY) {
        const auto* const event = static_cast<const xcb_property_notify_event_t*>(message);
        if (m_manager != XCB_WINDOW_NONE && event->window == m_manager && event->atom == m_property)
            read();
    } else if (type == XCB_DESTROY_NOTIFY) {
        const auto* const event = static_cast<const xcb_destroy_notify_event_t*>(message);
        if (m_manager != XCB_WINDOW_NONE && event->window == m_manager)
            findManager();
    } else if (type == XCB_CLIENT_MESSAGE) {
        // Qt listens for what is sent to the root window.
        const auto* const event = static_cast<const xcb_client_message_event_t*>(message);
        if (event->type == m_announcement && event->data.data32[1] == m_selection)
            findManager();
    }
    return false;
}

void XSettingsReader::findManager()
{
    const X11Reply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
        m_display.connection, xcb_get_selection_owner(m_display.connection, m_selection), nullptr));
    m_manager = owner ? owner->owner : xcb_window_t {XCB_WINDOW_NONE};
    if (m_manager != XCB_WINDOW_NONE) {
        // What Qt selects on this window for its own use. A window that is gone by now is no error.
        constexpr uint32_t kEvents = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
        const auto selected =
            xcb_change_window_attributes_checked(m_display.connection, m_manager, XCB_CW_EVENT_MASK, &kEvents);
        xcb_discard_reply(m_display.connection, selected.sequence);
    }
    read();
}

void XSettingsReader::read()
{
    LookWishes wishes;
    if (m_manager != XCB_WINDOW_NONE) {
        constexpr uint32_t kMostUnits = 65536;
        X11Property property(m_display.connection, {m_manager, m_property, m_property, kMostUnits});
        wishes = xSettingsWishes(parseXSettings(property.bytes().value_or(QByteArray())).value_or(XSettings()));
    }
    if (std::exchange(m_wishes, wishes) != wishes)
        Q_EMIT changed();
}

} // namespace orvella
