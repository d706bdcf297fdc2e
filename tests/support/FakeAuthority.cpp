#include "support/FakeAuthority.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QMap>
#include <QUuid>
#include <QVariantMap>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kAuthority = "org.freedesktop.PolicyKit1.Authority"_L1;
constexpr uint kMayAsk = 1;

/// The result of CheckAuthorization.
struct Verdict {
    bool isAllowed = false;
    bool isChallenge = false;
    QMap<QString, QString> details;
};

QDBusArgument& operator<<(QDBusArgument& argument, const Verdict& verdict)
{
    argument.beginStructure();
    argument << verdict.isAllowed << verdict.isChallenge << verdict.details;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, Verdict& verdict)
{
    argument.beginStructure();
    argument >> verdict.isAllowed >> verdict.isChallenge >> verdict.details;
    argument.endStructure();
    return argument;
}

} // namespace

FakeAuthority::FakeAuthority()
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SystemBus, m_connectionName))
{
    qDBusRegisterMetaType<QMap<QString, QString>>();
    qDBusRegisterMetaType<Verdict>();
    if (!m_bus.registerVirtualObject(u"/org/freedesktop/PolicyKit1/Authority"_s, this)
        || !m_bus.registerService(u"org.freedesktop.PolicyKit1"_s))
        qFatal("There is another authority on the bus.");
}

FakeAuthority::~FakeAuthority()
{
    m_bus.unregisterService(u"org.freedesktop.PolicyKit1"_s);
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void FakeAuthority::release()
{
    for (const auto& question : std::exchange(m_undecided, {}))
        m_bus.send(question.createReply(QVariant::fromValue(Verdict {true, false, {}})));
}

bool FakeAuthority::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (message.member() == "GetAll"_L1) {
        m_bus.send(message.createReply(
            QVariantMap {{u"BackendName"_s, u"fake"_s}, {u"BackendVersion"_s, u"1"_s}, {u"BackendFeatures"_s, 0U}}));
        return true;
    }
    if (message.interface() != kAuthority)
        return false;
    if (message.member() == "CheckAuthorization"_L1)
        decide(message);
    return true;
}

void FakeAuthority::decide(const QDBusMessage& question)
{
    const auto action = question.arguments().value(1).toString().section(u'.', 3);
    const bool mayAsk = (question.arguments().value(3).toUInt() & kMayAsk) != 0;
    m_questions.append(mayAsk ? action + u" with password"_s : action);
    if (held.contains(action))
        m_undecided.append(question);
    else
        m_bus.send(question.createReply(QVariant::fromValue(Verdict {!refused.contains(action), false, {}})));
}

} // namespace orvella
