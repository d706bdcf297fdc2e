#include "support/FakeStatusArea.h"

#include <QCoreApplication>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QTest>
#include <QUuid>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kWatcher = "org.kde.StatusNotifierWatcher"_L1;
constexpr auto kItem = "org.kde.StatusNotifierItem"_L1;
constexpr auto kItemPath = "/StatusNotifierItem"_L1;
constexpr auto kProperties = "org.freedesktop.DBus.Properties"_L1;

} // namespace

FakeStatusArea::FakeStatusArea()
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName))
{
    m_bus.connect({}, kItemPath, kItem, {}, this, SLOT(heard(QDBusMessage)));
}

FakeStatusArea::~FakeStatusArea()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

bool FakeStatusArea::start()
{
    m_items.clear();
    return m_bus.registerObject(u"/StatusNotifierWatcher"_s, this,
               QDBusConnection::ExportScriptableSlots | QDBusConnection::ExportAllProperties)
        && m_bus.registerService(kWatcher);
}

void FakeStatusArea::stop()
{
    m_bus.unregisterService(kWatcher);
    m_bus.unregisterObject(u"/StatusNotifierWatcher"_s);
}

void FakeStatusArea::announceHost()
{
    m_bus.send(QDBusMessage::createSignal(u"/StatusNotifierWatcher"_s, kWatcher, u"StatusNotifierHostRegistered"_s));
}

QStringList FakeStatusArea::takeSignals()
{
    return std::exchange(m_signals, {});
}

void FakeStatusArea::synchronise(const QString& item)
{
    // What an item has sent before its answer arrives before it.
    ask(QDBusMessage::createMethodCall(item, u"/"_s, u"org.freedesktop.DBus.Peer"_s, u"Ping"_s));
    QCoreApplication::processEvents();
}

QVariant FakeStatusArea::read(const QString& item, const QString& name)
{
    auto question = QDBusMessage::createMethodCall(item, kItemPath, kProperties, u"Get"_s);
    question << QString(kItem) << name;
    const auto answer = ask(question);
    if (answer.type() != QDBusMessage::ReplyMessage)
        return {};
    return answer.arguments().constFirst().value<QDBusVariant>().variant();
}

QDBusMessage FakeStatusArea::call(const QString& item, const QString& method, const QVariantList& arguments)
{
    auto question = QDBusMessage::createMethodCall(item, kItemPath, kItem, method);
    question.setArguments(arguments);
    return ask(question);
}

void FakeStatusArea::RegisterStatusNotifierItem(const QString& service)
{
    m_items.append(service);
    if (m_registered)
        m_registered();
    if (m_refuses)
        sendErrorReply(QDBusError::UnknownObject, u"not ready"_s);
}

void FakeStatusArea::heard(const QDBusMessage& signal)
{
    m_signals.append(signal.member());
}

QDBusMessage FakeStatusArea::ask(const QDBusMessage& question)
{
    // The item lives in this thread too, so the main loop has to run while the question is under way.
    const auto call = m_bus.asyncCall(question, 5000);
    if (!QTest::qWaitFor([&call] { return call.isFinished(); }, 6000))
        return QDBusMessage::createError(QDBusError::NoReply, u"no answer"_s);
    return call.reply();
}

} // namespace orvella
