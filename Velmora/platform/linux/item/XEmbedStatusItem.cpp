#include "platform/linux/item/XEmbedStatusItem.h"

#include "platform/linux/item/PanelTone.h"
#include "platform/linux/item/StatusPictures.h"

#include <xcb/xcb.h>

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>
#include <QSystemTrayIcon>

#include <cstdlib>
#include <utility>

namespace orvella {

namespace {

/// Waits until the X server has done what it was asked for.
void waitForServer()
{
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    auto* const connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection != nullptr)
        std::free(xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
}

} // namespace

XEmbedStatusItem::XEmbedStatusItem()
    : m_icon(std::make_unique<QSystemTrayIcon>())
{
    draw();
    connect(&m_panel, &PanelToneWatch::changed, this, &XEmbedStatusItem::draw);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, &XEmbedStatusItem::pressed);
}

XEmbedStatusItem::~XEmbedStatusItem()
{
    m_icon.reset();
    waitForServer();
}

void XEmbedStatusItem::show(Handlers handlers)
{
    m_handlers = std::move(handlers);
    m_icon->show();
}

void XEmbedStatusItem::setAppearance(const StatusAppearance& appearance)
{
    const auto before = std::exchange(m_appearance, appearance);
    if (before.tone != appearance.tone)
        draw();
    m_icon->setToolTip(appearance.description);
}

std::optional<QRect> XEmbedStatusItem::place() const
{
    // Until a tray takes the icon's window, it lies in the corner where Qt makes it.
    constexpr QRect kBeforeTheTray(0, 0, 22, 22);
    const auto geometry = m_icon->geometry();
    return geometry.isEmpty() || geometry == kBeforeTheTray ? std::nullopt : std::optional(geometry);
}

void XEmbedStatusItem::draw()
{
    QIcon icon;
    for (const auto& picture : statusPictures(m_appearance.tone, statusColour(m_appearance.tone, m_panel.tone())))
        icon.addPixmap(QPixmap::fromImage(picture));
    m_icon->setIcon(icon);
}

void XEmbedStatusItem::pressed(int reason)
{
    // A copy, because the item may be gone before the answer is at its end.
    const auto handlers = m_handlers;
    // A double click is a click and then a reason of its own, which adds nothing to it.
    if (reason == QSystemTrayIcon::Trigger && handlers.clicked)
        handlers.clicked();
    else if (reason == QSystemTrayIcon::Context && handlers.menuRequested)
        handlers.menuRequested(QCursor::pos());
}

} // namespace orvella
