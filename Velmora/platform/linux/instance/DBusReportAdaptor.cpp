#include "platform/linux/instance/DBusReportAdaptor.h"

#include <QMetaClassInfo>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

DBusReportAdaptor::DBusReportAdaptor(QObject* parent, QDBusConnection bus)
    : SealedAdaptor(parent)
    , m_bus(std::move(bus))
{
}

QString DBusReportAdaptor::interfaceName()
{
    const auto& type = staticMetaObject;
    return QString::fromLatin1(type.classInfo(type.indexOfClassInfo("D-Bus Interface")).value());
}

QString DBusReportAdaptor::Diagnose(const QDBusMessage& message)
{
    // What is returned from here is not sent then.
    message.setDelayedReply(true);
    // Qt takes whatever else comes for a part of the message.
    if (!message.arguments().isEmpty())
        m_bus.send(message.createErrorReply(QDBusError::InvalidArgs, u"Diagnose takes no arguments."_s));
    else if (m_report)
        answer(m_bus, message, m_report);
    else
        m_bus.send(message.createErrorReply(QDBusError::NotSupported, u"The program is not there yet."_s));
    return {};
}

QCoro::Task<> DBusReportAdaptor::answer(QDBusConnection bus, QDBusMessage message, Report report)
{
    const auto text = co_await report();
    bus.send(message.createReply(text));
}

} // namespace orvella
