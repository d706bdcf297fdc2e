#include "platform/linux/instance/DBusApplicationAdaptor.h"

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

using Request = Instance::Request;

DBusApplicationAdaptor::DBusApplicationAdaptor(
    QObject* parent, std::function<void(Request, const QVariantMap&)> requested)
    : SealedAdaptor(parent)
    , m_requested(std::move(requested))
{
}

std::optional<QString> DBusApplicationAdaptor::actionFor(Request request)
{
    switch (request) {
    case Request::openAd:
        return u"open-ad"_s;
    case Request::showSettings:
        return u"settings"_s;
    case Request::nothing:
    case Request::reopen:
        break;
    }
    return std::nullopt;
}

void DBusApplicationAdaptor::Activate(const QVariantMap& platform_data)
{
    m_requested(Request::reopen, platform_data);
}

void DBusApplicationAdaptor::Open(const QStringList&, const QVariantMap& platform_data)
{
    m_requested(Request::reopen, platform_data);
}

void DBusApplicationAdaptor::ActivateAction(
    const QString& action_name, const QVariantList&, const QVariantMap& platform_data)
{
    for (const auto request : {Request::openAd, Request::showSettings}) {
        if (action_name == actionFor(request))
            m_requested(request, platform_data);
    }
}

} // namespace orvella
