#include "platform/macos/MacStatusItem.h"

#include "platform/macos/CocoaStatusItem.h"

#include <utility>

namespace orvella {

MacStatusItem::MacStatusItem(CocoaStatusItem& item)
    : m_item(item)
{
}

void MacStatusItem::show(Handlers handlers)
{
    m_item.show(std::move(handlers.clicked));
    m_isShown = true;
    setAppearance(m_appearance);
}

void MacStatusItem::setAppearance(const StatusAppearance& appearance)
{
    m_appearance = appearance;
    if (!m_isShown)
        return;
    m_item.setAppearance({
        .text = appearance.text.toStdString(),
        .length = static_cast<double>(appearance.width),
        .isGreen = appearance.tone == StatusAppearance::Tone::green,
        .description = appearance.description.toStdString(),
    });
}

} // namespace orvella
