#include "platform/linux/item/LinuxStatusItem.h"

#include <QGuiApplication>

#include <utility>

namespace orvella {

LinuxStatusItem::LinuxStatusItem(QDBusConnection bus, StatusNotifierItem::Identity identity, ActivationTokens& tokens)
    : m_notifier(std::move(bus), std::move(identity), tokens)
{
    connect(&m_notifier, &StatusNotifierItem::watcherKnown, this, &LinuxStatusItem::choose);
}

void LinuxStatusItem::show(Handlers handlers)
{
    m_handlers = handlers;
    m_notifier.show(std::move(handlers));
}

void LinuxStatusItem::setAppearance(const StatusAppearance& appearance)
{
    m_appearance = appearance;
    m_notifier.setAppearance(appearance);
    if (m_embedded)
        m_embedded->setAppearance(appearance);
}

std::optional<QRect> LinuxStatusItem::place() const
{
    return m_embedded ? m_embedded->place() : m_notifier.place();
}

void LinuxStatusItem::choose(bool hasWatcher)
{
    if (hasWatcher)
        m_embedded.reset();
    else if (!m_embedded && m_mayEmbed && QGuiApplication::platformName() == QLatin1String("xcb"))
        embed();
}

void LinuxStatusItem::embed()
{
    // What the item has heard may be old by now, and Qt will look for itself.
    if (m_notifier.isWatcherThere())
        return;
    auto item = std::make_unique<XEmbedStatusItem>();
    // Where one came in this very moment, Qt may have seen it and would show a second item.
    if (m_notifier.isWatcherThere()) {
        m_mayEmbed = false;
        return;
    }
    m_embedded = std::move(item);
    m_embedded->setAppearance(m_appearance);
    m_embedded->show(m_handlers);
}

} // namespace orvella
