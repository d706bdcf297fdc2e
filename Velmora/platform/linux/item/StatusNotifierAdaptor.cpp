#include "platform/linux/item/StatusNotifierAdaptor.h"

#include <QDBusMetaType>
#include <QGuiApplication>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

StatusNotifierAdaptor::StatusNotifierAdaptor(QObject* item, QString id, Handlers handlers)
    : SealedAdaptor(item)
    , m_id(std::move(id))
    , m_handlers(std::move(handlers))
{
    qDBusRegisterMetaType<StatusPixmap>();
    qDBusRegisterMetaType<StatusPixmaps>();
    qDBusRegisterMetaType<StatusToolTip>();
}

void StatusNotifierAdaptor::setIcon(const StatusIcon& icon)
{
    // One that looks the same may be drawn already.
    if (icon == m_icon)
        return;
    m_icon = icon;
    Q_EMIT NewIcon();
}

void StatusNotifierAdaptor::setAttentionIcon(const StatusIcon& icon)
{
    if (icon == m_attentionIcon)
        return;
    m_attentionIcon = icon;
    Q_EMIT NewAttentionIcon();
}

void StatusNotifierAdaptor::setNeedsAttention(bool needsAttention)
{
    if (std::exchange(m_needsAttention, needsAttention) != needsAttention)
        Q_EMIT NewStatus(status());
}

void StatusNotifierAdaptor::setDescription(const QString& description)
{
    if (std::exchange(m_description, description) == description)
        return;
    Q_EMIT NewTitle();
    Q_EMIT NewToolTip();
}

QString StatusNotifierAdaptor::title() const
{
    return m_description.isEmpty() ? QGuiApplication::applicationDisplayName() : m_description;
}

QString StatusNotifierAdaptor::category() const
{
    return u"ApplicationStatus"_s;
}

QString StatusNotifierAdaptor::status() const
{
    return m_needsAttention ? u"NeedsAttention"_s : u"Active"_s;
}

StatusToolTip StatusNotifierAdaptor::toolTip() const
{
    return {.iconName = {}, .iconPixmap = {}, .title = m_description, .text = {}};
}

void StatusNotifierAdaptor::Activate(int x, int y)
{
    m_handlers.activate({x, y});
}

void StatusNotifierAdaptor::ContextMenu(int x, int y)
{
    m_handlers.contextMenu({x, y});
}

void StatusNotifierAdaptor::SecondaryActivate(int, int) {}

void StatusNotifierAdaptor::Scroll(int, const QString&) {}

void StatusNotifierAdaptor::ProvideXdgActivationToken(const QString& token)
{
    m_handlers.receiveActivationToken(token);
}

} // namespace orvella
