#include "platform/macos/MacPopover.h"

#include "platform/macos/CocoaPopover.h"

#include <QWindow>

#include <utility>

namespace orvella {

namespace {

/// What the toolkit calls a window's identifier is its NSView here.
void* viewOf(const QWindow& window)
{
    return reinterpret_cast<void*>(window.winId());
}

} // namespace

MacPopover::MacPopover(std::unique_ptr<CocoaPopover> popover)
    : m_popover(std::move(popover))
{
}

MacPopover::~MacPopover() = default;

void MacPopover::show(QWindow& content, QSize size, const std::optional<Part>& below)
{
    std::optional<CocoaPopover::Anchor> anchor;
    if (below) {
        const QRectF rect(below->rect);
        anchor = {viewOf(*below->window), rect.left(), rect.top(), rect.width(), rect.height()};
    }
    const QSizeF points(size);
    m_popover->show({viewOf(content), points.width(), points.height()}, anchor);
}

void MacPopover::performClose()
{
    m_popover->performClose();
    if (m_popover->isShown())
        m_popover->close();
}

bool MacPopover::isShown() const
{
    return m_popover->isShown();
}

} // namespace orvella
