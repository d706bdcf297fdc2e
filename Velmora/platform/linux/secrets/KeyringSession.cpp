#include "platform/linux/secrets/KeyringSession.h"

#include "platform/linux/bus/BusCall.h"
#include "platform/linux/secrets/KeyringPrompt.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kServiceName = "org.freedesktop.secrets"_L1;
constexpr auto kServiceInterface = "org.freedesktop.Secret.Service"_L1;
constexpr auto kCollectionInterface = "org.freedesktop.Secret.Collection"_L1;
constexpr auto kItemInterface = "org.freedesktop.Secret.Item"_L1;
constexpr auto kPromptInterface = "org.freedesktop.Secret.Prompt"_L1;
constexpr auto kPropertiesInterface = "org.freedesktop.DBus.Properties"_L1;
constexpr auto kServicePath = "/org/freedesktop/secrets"_L1;
constexpr auto kDefaultAlias = "default"_L1;
// What the service gives in place of an object that there is not, a prompt that is not needed for example.
constexpr auto kNoObject = "/"_L1;

// Nobody sees a window, understands it and dismisses it in less. A service whose prompter does not start, for there is
// no display in its environment yet, says at once that the prompt was dismissed: then nobody was asked.
constexpr auto kFastestViewer = std::chrono::seconds(1);

KeyringTrouble troubleOf(const QDBusMessage& error)
{
    static const QStringList absent {u"org.freedesktop.DBus.Error.ServiceUnknown"_s,
        u"org.freedesktop.DBus.Error.NameHasNoOwner"_s, u"org.freedesktop.DBus.Error.Spawn.ServiceNotFound"_s,
        u"org.freedesktop.DBus.Error.Disconnected"_s};
    if (absent.contains(error.errorName()))
        return KeyringTrouble::absent;
    if (error.errorName() == u"org.freedesktop.Secret.Error.IsLocked")
        return KeyringTrouble::locked;
    return KeyringTrouble::failed;
}

/// What a call has answered, if that is of the types that it has to be.
FromKeyring<QDBusMessage> answerOf(const BusCall::Reply& reply, QLatin1StringView types)
{
    if (reply.ending == BusCall::Ending::stopped)
        return KeyringTrouble::stopped;
    if (reply.ending == BusCall::Ending::timedOut)
        return KeyringTrouble::silent;
    if (reply.message.type() != QDBusMessage::ReplyMessage)
        return troubleOf(reply.message);
    return reply.message.signature() == types ? FromKeyring(reply.message) : KeyringTrouble::failed;
}

/// As "a{ss}".
QVariant attributes(const QString& service, const QString& account)
{
    QDBusArgument map;
    map.beginMap(QMetaType::fromType<QString>(), QMetaType::fromType<QString>());
    for (const auto& [name, value] : {std::pair {u"service"_s, service}, std::pair {u"account"_s, account}}) {
        map.beginMapEntry();
        map << name << value;
        map.endMapEntry();
    }
    map.endMap();
    return QVariant::fromValue(map);
}

QVariantMap itemProperties(const QString& service, const QString& account)
{
    // The programs that show a keyring to its owner list items by their label. It takes no part in finding them.
    return {
        {u"org.freedesktop.Secret.Item.Label"_s,
            QCoreApplication::translate("KeyringSession", "Orvella (%1)").arg(service)},
        {u"org.freedesktop.Secret.Item.Attributes"_s, attributes(service, account)},
    };
}

/// As "(oayays)": the session, what decrypting it needs, the bytes and what they are.
QVariant secretOf(const KeyringSession::Agreement& agreement, const Secret& value)
{
    const auto sent = agreement.cipher ? agreement.cipher->sealed(value)
                                       : KeyringCipher::Sealed {.parameters = {}, .value = value.reveal()};
    QDBusArgument structure;
    structure.beginStructure();
    structure << QDBusObjectPath(agreement.session) << sent.parameters << sent.value << u"text/plain"_s;
    structure.endStructure();
    return QVariant::fromValue(structure);
}

/// The one that belongs to the item, of "a{o(oayays)}".
std::optional<KeyringCipher::Sealed> secretIn(const QVariant& secrets, const KeyringSession::Path& wanted)
{
    std::optional<KeyringCipher::Sealed> found;
    const auto map = secrets.value<QDBusArgument>();
    map.beginMap();
    while (!map.atEnd()) {
        QDBusObjectPath item;
        QDBusObjectPath session;
        KeyringCipher::Sealed secret;
        QString contentType;
        map.beginMapEntry();
        map >> item;
        map.beginStructure();
        map >> session >> secret.parameters >> secret.value >> contentType;
        map.endStructure();
        map.endMapEntry();
        if (item.path() == wanted)
            found = secret;
    }
    map.endMap();
    return found;
}

KeyringSession::Path path(const QVariant& value)
{
    return value.value<QDBusObjectPath>().path();
}

std::vector<KeyringSession::Path> paths(const QVariant& value)
{
    std::vector<KeyringSession::Path> list;
    for (const auto& object : qdbus_cast<QList<QDBusObjectPath>>(value))
        list.push_back(object.path());
    return list;
}

} // namespace

QCoro::Task<FromKeyring<std::shared_ptr<KeyringSession>>> KeyringSession::open(
    Clock& clock, Clock::duration limit, QDBusConnection bus, std::stop_token stop)
{
    auto agreed = co_await agreeOn(clock, limit, bus, KeyringCipher(), stop);
    if (agreed && !*agreed)
        agreed = co_await agreeOn(clock, limit, bus, std::nullopt, stop);
    if (!agreed)
        co_return agreed.trouble();
    if (!*agreed)
        co_return KeyringTrouble::failed;
    co_return std::make_shared<KeyringSession>(clock, limit, bus, **agreed);
}

QCoro::Task<FromKeyring<std::optional<KeyringSession::Agreement>>> KeyringSession::agreeOn(
    Clock& clock, Clock::duration limit, QDBusConnection bus, std::optional<KeyringCipher> cipher, std::stop_token stop)
{
    auto agree = QDBusMessage::createMethodCall(kServiceName, kServicePath, kServiceInterface, u"OpenSession"_s);
    const auto ours = cipher ? QVariant(cipher->publicKey()) : QVariant(QString());
    agree << QString::fromLatin1(cipher ? KeyringCipher::kAlgorithm : "plain")
          << QVariant::fromValue(QDBusVariant(ours));
    const auto reply = co_await BusCall(clock, limit, bus, agree, stop);
    if (reply.message.errorName() == QDBusError::errorString(QDBusError::NotSupported))
        co_return std::optional<Agreement>();
    const auto answer = answerOf(reply, "vo"_L1);
    if (!answer)
        co_return answer.trouble();
    const auto theirs = answer->arguments().constFirst().value<QDBusVariant>().variant().toByteArray();
    if (cipher && !cipher->agree(theirs))
        co_return KeyringTrouble::failed;
    co_return std::optional(
        Agreement {.owner = answer->service(), .session = path(answer->arguments().constLast()), .cipher = cipher});
}

KeyringSession::KeyringSession(Clock& clock, Clock::duration limit, QDBusConnection bus, Agreement agreement)
    : m_clock(clock)
    , m_limit(limit)
    , m_bus(std::move(bus))
    , m_agreement(std::move(agreement))
    , m_owners(m_agreement.owner, m_bus, QDBusServiceWatcher::WatchForUnregistration)
{
    QObject::connect(&m_owners, &QDBusServiceWatcher::serviceUnregistered, &m_owners, [this] { m_isOwnerGone = true; });
}

KeyringSession::~KeyringSession() = default;

bool KeyringSession::isCurrent() const
{
    return !m_isOwnerGone && m_bus.isConnected();
}

QCoro::Task<FromKeyring<KeyringSession::Found>> KeyringSession::search(
    QString service, QString account, std::stop_token stop)
{
    const Method search {kServiceInterface, "SearchItems"_L1, "aoao"_L1};
    const auto reply = co_await call(kServicePath, search, {attributes(service, account)}, stop);
    if (!reply)
        co_return reply.trouble();
    co_return Found {paths(reply->constFirst()), paths(reply->constLast())};
}

QCoro::Task<FromKeyring<Secret>> KeyringSession::secret(Path item, std::stop_token stop)
{
    const Method getSecrets {kServiceInterface, "GetSecrets"_L1, "a{o(oayays)}"_L1};
    const QVariantList arguments {
        QVariant::fromValue(QList {QDBusObjectPath(item)}), QVariant::fromValue(QDBusObjectPath(m_agreement.session))};
    const auto reply = co_await call(kServicePath, getSecrets, arguments, stop);
    if (!reply)
        co_return reply.trouble();
    const auto found = secretIn(reply->constFirst(), item);
    if (!found)
        co_return KeyringTrouble::failed;
    const auto secret = m_agreement.cipher ? m_agreement.cipher->opened(*found) : Secret(found->value);
    if (!secret)
        co_return KeyringTrouble::failed;
    co_return *secret;
}

QCoro::Task<FromKeyring<>> KeyringSession::createItem(
    Path collection, QString service, QString account, Secret value, std::stop_token stop)
{
    const Method createItem {kCollectionInterface, "CreateItem"_L1, "oo"_L1};
    // Should an equal item be there in spite of all, it is replaced: there is never a second one.
    constexpr bool kReplaces = true;
    const QVariantList arguments {itemProperties(service, account), secretOf(m_agreement, value), kReplaces};
    const auto reply = co_await call(collection, createItem, arguments, stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(path(reply->constLast()), stop);
    co_return asked;
}

QCoro::Task<FromKeyring<>> KeyringSession::deleteItem(Path item, std::stop_token stop)
{
    const auto reply = co_await call(item, {kItemInterface, "Delete"_L1, "o"_L1}, {}, stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(path(reply->constFirst()), stop);
    co_return asked;
}

QCoro::Task<FromKeyring<KeyringSession::Path>> KeyringSession::defaultCollection(std::stop_token stop)
{
    const auto reply = co_await call(kServicePath, {kServiceInterface, "ReadAlias"_L1, "o"_L1}, {kDefaultAlias}, stop);
    if (!reply)
        co_return reply.trouble();
    const auto found = path(reply->constFirst());
    co_return found == kNoObject ? Path() : found;
}

QCoro::Task<FromKeyring<>> KeyringSession::createDefaultCollection(std::stop_token stop)
{
    const Method createCollection {kServiceInterface, "CreateCollection"_L1, "oo"_L1};
    const QVariantMap properties {{u"org.freedesktop.Secret.Collection.Label"_s,
        QCoreApplication::translate("KeyringSession", "Default keyring")}};
    const auto reply = co_await call(kServicePath, createCollection, {properties, kDefaultAlias}, stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(path(reply->constLast()), stop);
    co_return asked;
}

QCoro::Task<FromKeyring<bool>> KeyringSession::isLocked(Path collection, std::stop_token stop)
{
    const auto reply =
        co_await call(collection, {kPropertiesInterface, "Get"_L1, "v"_L1}, {kCollectionInterface, u"Locked"_s}, stop);
    if (!reply)
        co_return reply.trouble();
    const auto value = reply->constFirst().value<QDBusVariant>().variant();
    if (value.metaType() != QMetaType::fromType<bool>())
        co_return KeyringTrouble::failed;
    co_return value.toBool();
}

QCoro::Task<FromKeyring<>> KeyringSession::unlock(std::vector<Path> objects, std::stop_token stop)
{
    QList<QDBusObjectPath> locked;
    for (const auto& object : objects)
        locked.append(QDBusObjectPath(object));
    const auto reply =
        co_await call(kServicePath, {kServiceInterface, "Unlock"_L1, "aoo"_L1}, {QVariant::fromValue(locked)}, stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(path(reply->constLast()), stop);
    co_return asked;
}

/// Shows the prompt, if there is one, and waits for the viewer's answer.
QCoro::Task<FromKeyring<>> KeyringSession::agreement(Path prompt, std::stop_token stop)
{
    if (prompt == kNoObject)
        co_return {};
    KeyringPrompt shown(m_bus, m_agreement.owner, prompt);
    const auto asked = m_clock.now();
    const QString noWindow = u""_s;
    const auto reply = co_await call(prompt, {kPromptInterface, "Prompt"_L1, ""_L1}, {noWindow}, stop);
    if (!reply)
        co_return reply.trouble();
    co_await shown.wait(stop);
    // Deliberate: a stop does not withdraw the prompt. gnome-keyring 42 dies of `Dismiss`, and with it everyone's
    // secrets; a prompt that nobody waits for any more stays until the viewer answers it.
    if (stop.stop_requested())
        co_return KeyringTrouble::stopped;
    const auto answer = shown.answer();
    const auto isRefused = !answer && answer.trouble() == KeyringTrouble::refused;
    if (isRefused && m_clock.now() - asked < kFastestViewer)
        co_return KeyringTrouble::failed;
    co_return answer;
}

QCoro::Task<FromKeyring<QVariantList>> KeyringSession::call(
    Path object, Method method, QVariantList arguments, std::stop_token stop)
{
    auto call = QDBusMessage::createMethodCall(m_agreement.owner, object, method.interface, method.name);
    call.setArguments(arguments);
    call.setAutoStartService(false);
    const auto reply = co_await BusCall(m_clock, m_limit, m_bus, call, stop);
    const auto answer = answerOf(reply, method.answer);
    if (!answer)
        co_return answer.trouble();
    co_return answer->arguments();
}

} // namespace orvella
