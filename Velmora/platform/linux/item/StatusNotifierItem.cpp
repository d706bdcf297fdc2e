#include "platform/linux/item/StatusNotifierItem.h"

#include "platform/Screens.h"
#include "platform/linux/item/ClickPosition.h"
#include "platform/linux/item/PanelTone.h"
#include "platform/linux/item/StatusIcon.h"

#include <QCursor>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kItemPath = "/StatusNotifierItem"_L1;
constexpr auto kWatcherPath = "/StatusNotifierWatcher"_L1;
constexpr auto kWatcherService = "org.kde.StatusNotifierWatcher"_L1;

/// Only an X server tells where the pointer is; under Wayland, its X server has an old position.
std::optional<QPoint> pointerPosition()
{
    if (QGuiApplication::platformName() != u"xcb"_s || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return std::nullopt;
    return QCursor::pos();
}

} // namespace

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus, Identity identity, ActivationTokens& tokens)
    : m_bus(std::move(bus))
    , m_symbolicIcon(std::move(identity.symbolicIcon))
    , m_adaptor(new StatusNotifierAdaptor(this, std::move(identity.id),
          {
              .activate = [this](QPoint reported) { clicked(reported); },
              .contextMenu = [this](QPoint reported) { menuRequested(reported); },
              .receiveActivationToken = [&tokens](const QString& token) { tokens.receive(token); },
          }))
{
    refresh();
    connect(&m_panel, &PanelToneWatch::changed, this, &StatusNotifierItem::refresh);
    connect(&m_screens, &ScreenLayoutWatch::changed, this, [this] { m_lastClick.reset(); });
    connect(&m_watcherOwners, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { registerAt(owner); });
}

StatusNotifierItem::~StatusNotifierItem()
{
    m_bus.unregisterObject(kItemPath);
}

void StatusNotifierItem::show(Handlers handlers)
{
    m_handlers = std::move(handlers);
    if (!m_bus.isConnected()) {
        Q_EMIT watcherKnown(false);
        return;
    }
    if (!m_bus.registerObject(kItemPath, this, QDBusConnection::ExportAdaptors))
        return;
    m_watcherOwners.setConnection(m_bus);
    m_watcherOwners.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcherOwners.addWatchedService(kWatcherService);
    // A watcher may have its name before it can answer; then its first host is the occasion to try again.
    m_bus.connect({}, kWatcherPath, kWatcherService, u"StatusNotifierHostRegistered"_s, this, SLOT(findWatcher()));
    // A watcher that is there need not wait until it is known who it is.
    m_firstRequest = m_bus.asyncCall(registrationAt(kWatcherService));
    findWatcher();
}

void StatusNotifierItem::setAppearance(const StatusAppearance& appearance)
{
    m_appearance = appearance;
    refresh();
}

std::optional<QRect> StatusNotifierItem::place() const
{
    return m_lastClick.transform([](QPoint point) { return QRect(point, QSize(1, 1)); });
}

bool StatusNotifierItem::isWatcherThere() const
{
    const auto* const bus = m_bus.interface();
    return bus != nullptr && bus->isServiceRegistered(kWatcherService);
}

void StatusNotifierItem::refresh()
{
    const bool isGreen = m_appearance.tone == StatusAppearance::Tone::green;
    // The plain icon is green too: some bars show it whatever the status. It has no name then, because a symbolic icon
    // would get another colour.
    const StatusIcon icon(
        isGreen ? QString() : m_symbolicIcon, m_appearance.tone, statusColour(m_appearance.tone, m_panel.tone()));
    m_adaptor->setIcon(icon);
    // None before it is needed, so that the bars do not wait at the start for what they will not show.
    m_adaptor->setAttentionIcon(isGreen ? icon : StatusIcon());
    m_adaptor->setNeedsAttention(isGreen);
    m_adaptor->setDescription(m_appearance.description);
}

void StatusNotifierItem::findWatcher()
{
    auto question = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"GetNameOwner"_s);
    question << QString(kWatcherService);
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<QString> owner = *finished;
        registerAt(owner.isValid() ? owner.value() : QString());
    });
}

QDBusMessage StatusNotifierItem::registrationAt(const QString& watcher) const
{
    auto request =
        QDBusMessage::createMethodCall(watcher, kWatcherPath, kWatcherService, u"RegisterStatusNotifierItem"_s);
    request.setAutoStartService(false);
    // A name of its own would be one more thing that a sandbox has to allow; the connection's is enough.
    request << m_bus.baseService();
    return request;
}

void StatusNotifierItem::registerAt(const QString& watcher)
{
    auto request = std::exchange(m_firstRequest, std::nullopt);
    Q_EMIT watcherKnown(!watcher.isEmpty());
    if (std::exchange(m_watcher, watcher) == watcher)
        return;
    m_lastClick.reset();
    if (watcher.isEmpty())
        return;
    // The first one, unless it came too early: then it has its answer already, which the bus has given itself.
    if (!request || request->isError())
        request = m_bus.asyncCall(registrationAt(watcher));
    auto* call = new QDBusPendingCallWatcher(*request, this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, watcher](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (finished->isError() && m_watcher == watcher)
            m_watcher.clear();
    });
}

void StatusNotifierItem::clicked(QPoint reported)
{
    m_lastClick = clickPosition(reported, Screens::areas(), pointerPosition());
    if (m_handlers.clicked)
        m_handlers.clicked();
}

void StatusNotifierItem::menuRequested(QPoint reported)
{
    const auto pointer = pointerPosition();
    m_lastClick = clickPosition(reported, Screens::areas(), pointer);
    if (m_handlers.menuRequested)
        m_handlers.menuRequested(m_lastClick.value_or(pointer.value_or(reported)));
}

} // namespace orvella
