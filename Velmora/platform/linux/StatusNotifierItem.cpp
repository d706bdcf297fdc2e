#include "platform/linux/StatusNotifierItem.h"

#include "platform/linux/ClickPosition.h"
#include "platform/linux/TrayGlyph.h"

#include <QCursor>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QScreen>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kItemPath = "/StatusNotifierItem"_L1;
constexpr auto kWatcherPath = "/StatusNotifierWatcher"_L1;
constexpr auto kWatcherService = "org.kde.StatusNotifierWatcher"_L1;

/// The sizes of all usual bars, at one and two device pixels for each logical one, so that none has to scale.
StatusPixmaps pictures(TrayGlyph glyph, const QColor& colour)
{
    StatusPixmaps result;
    for (const int pixels : {16, 22, 24, 32, 44, 48, 64})
        result.append(StatusPixmap::fromImage(drawTrayGlyph(glyph, pixels, colour)));
    return result;
}

QList<ScreenArea> screenAreas()
{
    QList<ScreenArea> areas;
    for (const auto* screen : QGuiApplication::screens())
        areas.append({screen->geometry(), screen->availableGeometry()});
    return areas;
}

/// Only an X server tells where the pointer is; under Wayland, its X server has an old position.
std::optional<QPoint> pointerPosition()
{
    if (QGuiApplication::platformName() != u"xcb"_s || qEnvironmentVariableIsSet("WAYLAND_DISPLAY"))
        return std::nullopt;
    return QCursor::pos();
}

} // namespace

StatusNotifierItem::StatusNotifierItem(QDBusConnection bus, QString id)
    : m_bus(std::move(bus))
    , m_adaptor(new StatusNotifierAdaptor(this, std::move(id),
          {
              .activate = [this](QPoint reported) { activated(reported); },
              .takeActivationToken = [this](QString token) { m_activationToken = std::move(token); },
          }))
{
    drawPictures();
    connect(&m_panel, &PanelToneWatch::changed, this, &StatusNotifierItem::drawPictures);
    connect(&m_watcherOwners, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString&, const QString&, const QString& owner) { registerAt(owner); });
}

StatusNotifierItem::~StatusNotifierItem()
{
    m_bus.unregisterObject(kItemPath);
}

void StatusNotifierItem::show(std::function<void()> clicked)
{
    m_clicked = std::move(clicked);
    if (!m_bus.isConnected() || !m_bus.registerObject(kItemPath, this, QDBusConnection::ExportAdaptors))
        return;
    m_watcherOwners.setConnection(m_bus);
    m_watcherOwners.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_watcherOwners.addWatchedService(kWatcherService);
    // A watcher may have its name before it can answer; then its first host is the occasion to try again.
    m_bus.connect({}, kWatcherPath, kWatcherService, u"StatusNotifierHostRegistered"_s, this, SLOT(findWatcher()));
    findWatcher();
}

void StatusNotifierItem::setAppearance(const StatusAppearance& appearance)
{
    m_appearance = appearance;
    refresh();
}

QString StatusNotifierItem::takeActivationToken()
{
    return std::exchange(m_activationToken, {});
}

void StatusNotifierItem::drawPictures()
{
    m_dollar = pictures(TrayGlyph::dollar, statusColour(StatusAppearance::Tone::label, m_panel.tone()));
    m_dollarAd = pictures(TrayGlyph::dollarAd, statusColour(StatusAppearance::Tone::green, m_panel.tone()));
    refresh();
}

void StatusNotifierItem::refresh()
{
    const bool isGreen = m_appearance.tone == StatusAppearance::Tone::green;
    // The plain icon is green too: some bars show it whatever the status.
    m_adaptor->setIcon(isGreen ? m_dollarAd : m_dollar);
    m_adaptor->setAttentionIcon(m_dollarAd);
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
        if (owner.isValid())
            registerAt(owner.value());
    });
}

void StatusNotifierItem::registerAt(const QString& watcher)
{
    if (std::exchange(m_watcher, watcher) == watcher || watcher.isEmpty())
        return;
    auto request =
        QDBusMessage::createMethodCall(watcher, kWatcherPath, kWatcherService, u"RegisterStatusNotifierItem"_s);
    // A name of its own would be one more thing that a sandbox has to allow; the connection's is enough.
    request << m_bus.baseService();
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(request), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, watcher](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        if (finished->isError() && m_watcher == watcher)
            m_watcher.clear();
    });
}

void StatusNotifierItem::activated(QPoint reported)
{
    m_lastClick = clickPosition(reported, screenAreas(), pointerPosition());
    if (m_clicked)
        m_clicked();
}

} // namespace orvella
