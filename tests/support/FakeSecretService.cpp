#include "support/FakeSecretService.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTimer>

#include <algorithm>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

const auto kConnectionName = u"fake-secret-service"_s;
const auto kRoot = u"/org/freedesktop/secrets"_s;
const auto kCollection = u"/org/freedesktop/secrets/collection/only"_s;
const auto kSession = u"/org/freedesktop/secrets/session/only"_s;

/// A secret as it is on the bus: (oayays).
struct BusSecret {
    QDBusObjectPath session;
    QByteArray parameters;
    QByteArray value;
    QString contentType;
};

using BusSecrets = QMap<QDBusObjectPath, BusSecret>;

QDBusArgument& operator<<(QDBusArgument& argument, const BusSecret& secret)
{
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, BusSecret& secret)
{
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    // NOLINTNEXTLINE(bugprone-return-const-ref-from-parameter): Qt wants it so.
    return argument;
}

QVariant path(const QString& text)
{
    return QVariant::fromValue(QDBusObjectPath(text));
}

QDBusConnection bus()
{
    return QDBusConnection(kConnectionName);
}

} // namespace

FakeSecretService::~FakeSecretService()
{
    die();
}

void FakeSecretService::start()
{
    qDBusRegisterMetaType<BusSecret>();
    qDBusRegisterMetaType<BusSecrets>();
    qDBusRegisterMetaType<QMap<QString, QString>>();
    auto connection = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnectionName);
    if (!connection.registerVirtualObject(kRoot, this, QDBusConnection::SubPath)
        || !connection.registerService(u"org.freedesktop.secrets"_s))
        qFatal("There is another Secret Service on the bus.");
}

bool FakeSecretService::isThere()
{
    return bus().isConnected();
}

void FakeSecretService::die()
{
    m_prompts.clear();
    QDBusConnection::disconnectFromBus(kConnectionName);
}

void FakeSecretService::fail(const QString& method, Fault fault, int times)
{
    m_faults.insert(method, {fault, times});
}

void FakeSecretService::put(const QString& service, const QByteArray& secret)
{
    const auto attributes = QMap<QString, QString> {{u"service"_s, service}, {u"account"_s, u"default"_s}};
    items.insert_or_assign(kCollection + u"/%1"_s.arg(++m_lastId), Item {attributes, secret});
}

void FakeSecretService::agree()
{
    complete(false);
}

void FakeSecretService::dismiss()
{
    complete(true);
}

bool FakeSecretService::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    m_calls.append(message.member());
    if (!misbehaves(message))
        bus().send(answer(message));
    return true;
}

QString FakeSecretService::introspect(const QString&) const
{
    return {};
}

bool FakeSecretService::misbehaves(const QDBusMessage& message)
{
    const auto found = m_faults.find(message.member());
    if (found == m_faults.end() || found->times-- <= 0)
        return false;
    if (found->fault == Fault::death)
        // Not from inside the call.
        QTimer::singleShot(0, this, &FakeSecretService::die);
    if (found->fault == Fault::silence)
        ++m_unanswered;
    if (found->fault == Fault::error)
        bus().send(message.createErrorReply(QDBusError::Failed, u"It failed."_s));
    return true;
}

QDBusMessage FakeSecretService::answer(const QDBusMessage& message)
{
    const auto method = message.member();
    if (method == u"OpenSession")
        return openSession(message);
    if (method == u"SearchItems")
        return search(message);
    if (method == u"GetSecrets")
        return secrets(message);
    if (method == u"CreateItem")
        return createItem(message);
    if (method == u"Unlock")
        return unlock(message);
    if (method == u"GetAll")
        return message.createReply(QVariantMap());
    if (method == u"Get")
        return message.createReply(QVariant::fromValue(QDBusVariant(isLocked)));
    if (method == u"ReadAlias")
        return message.createReply(path(hasCollection ? kCollection : u"/"_s));
    if (method == u"CreateCollection")
        return message.createReply({path(u"/"_s), path(newPrompt(true))});
    if (method == u"Delete") {
        items.erase(message.path());
        return message.createReply(path(u"/"_s));
    }
    if (method == u"Prompt") {
        m_prompts.push_back({message.path(), std::erase(m_waitingPrompts, message.path()) == 0});
        return message.createReply();
    }
    return message.createErrorReply(QDBusError::UnknownMethod, method);
}

QDBusMessage FakeSecretService::openSession(const QDBusMessage& message) const
{
    if (message.arguments().value(0).toString() != u"plain")
        return message.createErrorReply(QDBusError::NotSupported, u"Only plain sessions."_s);
    return message.createReply({QVariant::fromValue(QDBusVariant(u""_s)), path(kSession)});
}

QDBusMessage FakeSecretService::search(const QDBusMessage& message) const
{
    const auto wanted = qdbus_cast<QMap<QString, QString>>(message.arguments().value(0));
    QList<QDBusObjectPath> found;
    for (const auto& [itemPath, item] : items) {
        const auto fits = [&](const QString& name) { return item.attributes.value(name) == wanted.value(name); };
        if (std::ranges::all_of(wanted.keys(), fits))
            found.append(QDBusObjectPath(itemPath));
    }
    if (!isLocked)
        return message.createReply({QVariant::fromValue(found), QVariant::fromValue(QList<QDBusObjectPath>())});
    if (hidesLockedItems)
        found.clear();
    return message.createReply({QVariant::fromValue(QList<QDBusObjectPath>()), QVariant::fromValue(found)});
}

QDBusMessage FakeSecretService::secrets(const QDBusMessage& message) const
{
    BusSecrets found;
    for (const auto& wanted : qdbus_cast<QList<QDBusObjectPath>>(message.arguments().value(0))) {
        if (const auto item = items.find(wanted.path()); item != items.end() && !isLocked)
            found.insert(wanted, {QDBusObjectPath(kSession), {}, item->second.secret, u"text/plain"_s});
    }
    return message.createReply(QVariant::fromValue(found));
}

QDBusMessage FakeSecretService::createItem(const QDBusMessage& message)
{
    if (isLocked)
        return message.createErrorReply(u"org.freedesktop.Secret.Error.IsLocked"_s, u"It is locked."_s);
    const auto properties = qdbus_cast<QVariantMap>(message.arguments().value(0));
    const auto secret = qdbus_cast<BusSecret>(message.arguments().value(1));
    const auto attributes =
        qdbus_cast<QMap<QString, QString>>(properties.value(u"org.freedesktop.Secret.Item.Attributes"_s));
    const auto replaces = message.arguments().value(2).toBool();
    const auto equal =
        std::ranges::find_if(items, [&](const auto& item) { return item.second.attributes == attributes; });
    const auto itemPath = replaces && equal != items.end() ? equal->first : kCollection + u"/%1"_s.arg(++m_lastId);
    items.insert_or_assign(itemPath, Item {attributes, secret.value});
    return message.createReply({path(itemPath), path(u"/"_s)});
}

QDBusMessage FakeSecretService::unlock(const QDBusMessage& message)
{
    const auto unlocked =
        isLocked ? QList<QDBusObjectPath>() : qdbus_cast<QList<QDBusObjectPath>>(message.arguments().value(0));
    return message.createReply({QVariant::fromValue(unlocked), path(isLocked ? newPrompt(false) : u"/"_s)});
}

QString FakeSecretService::newPrompt(bool createsCollection)
{
    const auto prompt = kRoot + u"/prompt/%1"_s.arg(++m_lastId);
    if (!createsCollection)
        m_waitingPrompts.push_back(prompt);
    return prompt;
}

void FakeSecretService::complete(bool isDismissed)
{
    if (m_prompts.empty())
        qFatal("No prompt is up.");
    const auto prompt = m_prompts.front();
    m_prompts.erase(m_prompts.begin());
    QVariant result;
    if (prompt.createsCollection) {
        hasCollection = hasCollection || !isDismissed;
        result = path(isDismissed ? u"/"_s : kCollection);
    } else {
        isLocked = isLocked && isDismissed;
        result = QVariant::fromValue(isDismissed ? QList<QDBusObjectPath>() : QList {QDBusObjectPath(kCollection)});
    }
    auto signal = QDBusMessage::createSignal(prompt.path, u"org.freedesktop.Secret.Prompt"_s, u"Completed"_s);
    signal << isDismissed << QVariant::fromValue(QDBusVariant(result));
    bus().send(signal);
}

} // namespace orvella
