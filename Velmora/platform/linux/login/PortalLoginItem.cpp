#include "platform/linux/login/PortalLoginItem.h"

#include "platform/linux/bus/PortalRequest.h"
#include "platform/linux/files/AtomicFile.h"

#include <QCoreApplication>
#include <QFile>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView kEnabled = "enabled\n";
constexpr QByteArrayView kRefused = "refused\n";

LoginItem::Status kept(const QString& path)
{
    QFile file(path);
    const auto content = file.open(QIODevice::ReadOnly) ? file.read(kEnabled.size() + 1) : QByteArray();
    if (content == kEnabled)
        return LoginItem::Status::enabled;
    return content == kRefused ? LoginItem::Status::requiresApproval : LoginItem::Status::notRegistered;
}

Result<void> refused()
{
    return failed(Failure::Kind::refused,
        QCoreApplication::translate("PortalLoginItem", "The desktop does not let Orvella start at login."));
}

Result<void> unchanged()
{
    return failed(Failure::Kind::refused,
        QCoreApplication::translate("PortalLoginItem", "The desktop cannot change whether Orvella starts at login."));
}

} // namespace

PortalLoginItem::PortalLoginItem(QDBusConnection bus, QStringList command, QString file)
    : m_bus(std::move(bus))
    , m_command(std::move(command))
    , m_file(std::move(file))
    , m_status(kept(m_file))
{
}

Result<void> PortalLoginItem::registerItem()
{
    return ask(Wish::start);
}

Result<void> PortalLoginItem::unregisterItem()
{
    return ask(Wish::stay);
}

Result<void> PortalLoginItem::ask(Wish wish)
{
    close();
    if (!m_bus.isConnected())
        return unchanged();
    // Everything each time: what is left out the portal takes for its defaults, and removes the entry.
    m_request = new PortalRequest(m_bus,
        {
            .interface = u"org.freedesktop.portal.Background"_s,
            .method = u"RequestBackground"_s,
            // No window to put the portal's own before.
            .arguments = {QString()},
            .options =
                {
                    {u"reason"_s,
                        QCoreApplication::translate(
                            "PortalLoginItem", "Orvella waits in the desktop's bar until there is an ad.")},
                    {u"autostart"_s, wish == Wish::start},
                    {u"commandline"_s, m_command},
                    {u"dbus-activatable"_s, false},
                },
        });
    m_request->setParent(this);
    connect(m_request, &PortalRequest::answered, this,
        [this, wish](uint response, const QVariantMap& results) { take(wish, response, results); });
    connect(m_request, &PortalRequest::failed, this, [this] { tell(unchanged()); });
    return {};
}

void PortalLoginItem::take(Wish wish, uint response, const QVariantMap& results)
{
    const bool isDone = response == 0;
    if (wish == Wish::stay) {
        if (isDone)
            keep(Status::notRegistered);
        tell(isDone ? Result<void>() : unchanged());
        return;
    }
    const bool isGranted = isDone && results.value(u"autostart"_s).toBool();
    keep(isGranted ? Status::enabled : Status::requiresApproval);
    tell(isGranted ? Result<void>() : refused());
}

void PortalLoginItem::keep(Status status)
{
    m_status = status;
    QByteArrayView content;
    if (status == Status::enabled)
        content = kEnabled;
    else if (status == Status::requiresApproval)
        content = kRefused;
    // A full disk costs what the next run knows of it, and nothing else.
    static_cast<void>(AtomicFile(m_file).replace(content.toByteArray()));
}

void PortalLoginItem::close()
{
    if (auto* const request = std::exchange(m_request, nullptr)) {
        request->close();
        request->deleteLater();
    }
}

void PortalLoginItem::tell(const Result<void>& outcome)
{
    close();
    // A copy, because the listener may replace itself.
    if (const auto answered = m_answered)
        answered(outcome);
}

} // namespace orvella
