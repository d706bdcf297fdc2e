#define SECRET_API_SUBJECT_TO_CHANGE
#include <libsecret/secret.h>

#include "platform/linux/KeyringSession.h"

#include "platform/linux/KeyringPrompt.h"

#include <QCoreApplication>

#include <utility>

namespace orvella {

namespace {

constexpr auto kServiceInterface = "org.freedesktop.Secret.Service";
constexpr auto kCollectionInterface = "org.freedesktop.Secret.Collection";
constexpr auto kItemInterface = "org.freedesktop.Secret.Item";
constexpr auto kPromptInterface = "org.freedesktop.Secret.Prompt";
constexpr auto kServicePath = "/org/freedesktop/secrets";
constexpr auto kDefaultAlias = "default";
// What the service gives in place of an object that there is not, a prompt that is not needed for example.
constexpr auto kNoObject = "/";

// Nobody sees a window, understands it and dismisses it in less. A service whose prompter does not start, for there is
// no display in its environment yet, says at once that the prompt was dismissed: then nobody was asked.
constexpr auto kFastestViewer = std::chrono::seconds(1);

/// Takes what a `_finish` function says went wrong.
class ErrorSlot final {
public:
    ErrorSlot() = default;
    ErrorSlot(const ErrorSlot&) = delete;
    ErrorSlot& operator=(const ErrorSlot&) = delete;

    ~ErrorSlot() { g_clear_error(&m_error); }

    [[nodiscard]] GError** slot() { return &m_error; }

    [[nodiscard]] bool isSet() const { return m_error; }

    [[nodiscard]] KeyringTrouble trouble() const
    {
        if (is(G_DBUS_ERROR, G_DBUS_ERROR_SERVICE_UNKNOWN) || is(G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER)
            || is(G_DBUS_ERROR, G_DBUS_ERROR_SPAWN_SERVICE_NOT_FOUND) || is(G_IO_ERROR, G_IO_ERROR_CLOSED))
            return KeyringTrouble::absent;
        if (is(G_IO_ERROR, G_IO_ERROR_TIMED_OUT))
            return KeyringTrouble::silent;
        if (is(SECRET_ERROR, SECRET_ERROR_IS_LOCKED))
            return KeyringTrouble::locked;
        return KeyringTrouble::failed;
    }

    [[nodiscard]] bool is(GQuark domain, int code) const { return m_error && g_error_matches(m_error, domain, code); }

private:
    GError* m_error = nullptr;
};

struct SecretValueRelease {
    void operator()(SecretValue* value) const { secret_value_unref(value); }
};

using SecretValuePointer = std::unique_ptr<SecretValue, SecretValueRelease>;

KeyringTrouble unanswered(GLibCall::Ending ending)
{
    return ending == GLibCall::Ending::stopped ? KeyringTrouble::stopped : KeyringTrouble::silent;
}

GLibPointer<GHashTable> attributeTable(const QString& service, const QString& account)
{
    GLibPointer<GHashTable> table(g_hash_table_new_full(g_str_hash, g_str_equal, g_free, g_free));
    g_hash_table_insert(table.get(), g_strdup("service"), g_strdup(service.toUtf8().constData()));
    g_hash_table_insert(table.get(), g_strdup("account"), g_strdup(account.toUtf8().constData()));
    return table;
}

GVariant* itemProperties(const QString& service, const QString& account)
{
    GVariantBuilder attributes;
    g_variant_builder_init(&attributes, G_VARIANT_TYPE("a{ss}"));
    g_variant_builder_add(&attributes, "{ss}", "service", service.toUtf8().constData());
    g_variant_builder_add(&attributes, "{ss}", "account", account.toUtf8().constData());

    // The programs that show a keyring to its owner list items by their label. It takes no part in finding them.
    const auto label = QCoreApplication::translate("KeyringSession", "Orvella (%1)").arg(service).toUtf8();
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Item.Label", g_variant_new_string(label));
    g_variant_builder_add(
        &properties, "{sv}", "org.freedesktop.Secret.Item.Attributes", g_variant_builder_end(&attributes));
    return g_variant_builder_end(&properties);
}

std::vector<KeyringSession::Path> pathList(const char* const* paths)
{
    std::vector<KeyringSession::Path> list;
    for (; paths && *paths; ++paths)
        list.emplace_back(*paths);
    return list;
}

/// Only for what is floating: of anything else, one more reference would never be given back.
GLibPointer<GVariant> owned(GVariant* floating)
{
    return GLibPointer<GVariant>(g_variant_ref_sink(floating));
}

KeyringSession::Path pathAt(GVariant* reply, gsize index)
{
    const GLibPointer<GVariant> path(g_variant_get_child_value(reply, index));
    return g_variant_get_string(path.get(), nullptr);
}

} // namespace

QCoro::Task<FromKeyring<std::shared_ptr<KeyringSession>>> KeyringSession::open(
    Clock& clock, Clock::duration limit, std::stop_token stop)
{
    GLibCall connect(clock, limit, stop, [](auto* cancellable, auto answered, auto data) {
        g_bus_get(G_BUS_TYPE_SESSION, cancellable, answered, data);
    });
    const auto connected = co_await connect;
    if (!connected.result)
        co_return unanswered(connected.ending);
    const GLibPointer<GDBusConnection> bus(g_bus_get_finish(connected.result.get(), nullptr));
    if (!bus)
        co_return KeyringTrouble::absent;
    // GLib would end the program together with the bus.
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);

    GLibCall agree(clock, limit, stop, [](auto* cancellable, auto answered, auto data) {
        secret_service_open(SECRET_TYPE_SERVICE, nullptr, SECRET_SERVICE_OPEN_SESSION, cancellable, answered, data);
    });
    const auto agreed = co_await agree;
    if (!agreed.result)
        co_return unanswered(agreed.ending);
    ErrorSlot error;
    GLibPointer<SecretService> service(secret_service_open_finish(agreed.result.get(), error.slot()));
    if (!service)
        co_return error.trouble();
    auto session = std::make_shared<KeyringSession>(clock, limit, std::move(service));
    // It may have ended since it agreed.
    if (session->m_owner.isEmpty())
        co_return KeyringTrouble::failed;
    co_return session;
}

KeyringSession::KeyringSession(Clock& clock, Clock::duration limit, GLibPointer<SecretService> service)
    : m_clock(clock)
    , m_limit(limit)
    , m_service(std::move(service))
    , m_owner(GLibPointer<char>(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(m_service.get()))).get())
{
}

KeyringSession::~KeyringSession() = default;

bool KeyringSession::isCurrent() const
{
    const GLibPointer<char> owner(g_dbus_proxy_get_name_owner(G_DBUS_PROXY(m_service.get())));
    return owner && m_owner == owner.get() && !g_dbus_connection_is_closed(connection());
}

QCoro::Task<FromKeyring<KeyringSession::Found>> KeyringSession::search(
    QString service, QString account, std::stop_token stop)
{
    GLibCall search(m_clock, m_limit, stop, [&](auto* cancellable, auto answered, auto data) {
        const auto attributes = attributeTable(service, account);
        secret_service_search_for_dbus_paths(m_service.get(), nullptr, attributes.get(), cancellable, answered, data);
    });
    const auto reply = co_await search;
    if (!reply.result)
        co_return unanswered(reply.ending);
    ErrorSlot error;
    char** unlocked = nullptr;
    char** locked = nullptr;
    const auto hasWorked = secret_service_search_for_dbus_paths_finish(
        m_service.get(), reply.result.get(), &unlocked, &locked, error.slot());
    const GLibPointer<char*> ownedUnlocked(unlocked);
    const GLibPointer<char*> ownedLocked(locked);
    if (!hasWorked)
        co_return error.trouble();
    co_return Found {pathList(unlocked), pathList(locked)};
}

QCoro::Task<FromKeyring<Secret>> KeyringSession::secret(Path item, std::stop_token stop)
{
    // Not libsecret's own function for it, which never lets go of the answer (0.20.5).
    const auto* const path = item.constData();
    auto arguments = owned(
        g_variant_new("(@aoo)", g_variant_new_objv(&path, 1), secret_service_get_session_dbus_path(m_service.get())));
    const auto reply =
        co_await call(kServicePath, kServiceInterface, "GetSecrets", "(a{o(oayays)})", std::move(arguments), stop);
    if (!reply)
        co_return reply.trouble();
    const GLibPointer<GVariant> secrets(g_variant_get_child_value(reply->get(), 0));
    const GLibPointer<GVariant> encoded(g_variant_lookup_value(secrets.get(), path, G_VARIANT_TYPE("(oayays)")));
    const SecretValuePointer value(
        encoded ? secret_service_decode_dbus_secret(m_service.get(), encoded.get()) : nullptr);
    if (!value)
        co_return KeyringTrouble::failed;
    gsize length = 0;
    const auto* const bytes = secret_value_get(value.get(), &length);
    co_return Secret(QByteArray(bytes, static_cast<qsizetype>(length)));
}

QCoro::Task<FromKeyring<>> KeyringSession::createItem(
    Path collection, QString service, QString account, Secret value, std::stop_token stop)
{
    const SecretValuePointer plain(secret_value_new(value.reveal().constData(), value.reveal().size(), "text/plain"));
    auto* const encoded = secret_service_encode_dbus_secret(m_service.get(), plain.get());
    // Should an equal item be there in spite of all, it is replaced: there is never a second one.
    auto arguments = owned(g_variant_new("(@a{sv}@(oayays)b)", itemProperties(service, account), encoded, TRUE));
    const auto reply =
        co_await call(collection, kCollectionInterface, "CreateItem", "(oo)", std::move(arguments), stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(pathAt(reply->get(), 1), stop);
    co_return asked;
}

QCoro::Task<FromKeyring<>> KeyringSession::deleteItem(Path item, std::stop_token stop)
{
    const auto reply = co_await call(item, kItemInterface, "Delete", "(o)", nullptr, stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(pathAt(reply->get(), 0), stop);
    co_return asked;
}

QCoro::Task<FromKeyring<KeyringSession::Path>> KeyringSession::defaultCollection(std::stop_token stop)
{
    auto arguments = owned(g_variant_new("(s)", kDefaultAlias));
    const auto reply = co_await call(kServicePath, kServiceInterface, "ReadAlias", "(o)", std::move(arguments), stop);
    if (!reply)
        co_return reply.trouble();
    const auto path = pathAt(reply->get(), 0);
    co_return path == kNoObject ? Path() : path;
}

QCoro::Task<FromKeyring<>> KeyringSession::createDefaultCollection(std::stop_token stop)
{
    const auto label = QCoreApplication::translate("KeyringSession", "Default keyring").toUtf8();
    GVariantBuilder properties;
    g_variant_builder_init(&properties, G_VARIANT_TYPE("a{sv}"));
    g_variant_builder_add(&properties, "{sv}", "org.freedesktop.Secret.Collection.Label", g_variant_new_string(label));
    auto arguments = owned(g_variant_new("(a{sv}s)", &properties, kDefaultAlias));
    const auto reply =
        co_await call(kServicePath, kServiceInterface, "CreateCollection", "(oo)", std::move(arguments), stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(pathAt(reply->get(), 1), stop);
    co_return asked;
}

QCoro::Task<FromKeyring<bool>> KeyringSession::isLocked(Path collection, std::stop_token stop)
{
    auto arguments = owned(g_variant_new("(ss)", kCollectionInterface, "Locked"));
    const auto reply =
        co_await call(collection, "org.freedesktop.DBus.Properties", "Get", "(v)", std::move(arguments), stop);
    if (!reply)
        co_return reply.trouble();
    const GLibPointer<GVariant> boxed(g_variant_get_child_value(reply->get(), 0));
    const GLibPointer<GVariant> value(g_variant_get_variant(boxed.get()));
    if (!g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN))
        co_return KeyringTrouble::failed;
    co_return static_cast<bool>(g_variant_get_boolean(value.get()));
}

QCoro::Task<FromKeyring<>> KeyringSession::unlock(std::vector<Path> objects, std::stop_token stop)
{
    GVariantBuilder paths;
    g_variant_builder_init(&paths, G_VARIANT_TYPE("ao"));
    for (const auto& object : objects)
        g_variant_builder_add(&paths, "o", object.constData());
    auto arguments = owned(g_variant_new("(ao)", &paths));
    const auto reply = co_await call(kServicePath, kServiceInterface, "Unlock", "(aoo)", std::move(arguments), stop);
    if (!reply)
        co_return reply.trouble();
    const auto asked = co_await agreement(pathAt(reply->get(), 1), stop);
    co_return asked;
}

/// Shows the prompt, if there is one, and waits for the viewer's answer.
QCoro::Task<FromKeyring<>> KeyringSession::agreement(Path prompt, std::stop_token stop)
{
    if (prompt == kNoObject)
        co_return {};
    KeyringPrompt shown(connection(), m_owner, prompt);
    const auto asked = m_clock.now();
    auto window = owned(g_variant_new("(s)", ""));
    const auto reply = co_await call(prompt, kPromptInterface, "Prompt", "()", std::move(window), stop);
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

QCoro::Task<FromKeyring<KeyringSession::Variant>> KeyringSession::call(Path object, const char* interface,
    const char* method, const char* replyType, Variant arguments, std::stop_token stop)
{
    GLibCall call(m_clock, m_limit, stop, [&](auto* cancellable, auto answered, auto data) {
        g_dbus_connection_call(connection(), m_owner.constData(), object.constData(), interface, method,
            arguments.get(), G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NO_AUTO_START, G_MAXINT, cancellable,
            answered, data);
    });
    const auto reply = co_await call;
    if (!reply.result)
        co_return unanswered(reply.ending);
    ErrorSlot error;
    Variant value(g_dbus_connection_call_finish(connection(), reply.result.get(), error.slot()));
    if (!value)
        co_return error.trouble();
    co_return FromKeyring<Variant>(std::move(value));
}

GDBusConnection* KeyringSession::connection() const
{
    return g_dbus_proxy_get_connection(G_DBUS_PROXY(m_service.get()));
}

} // namespace orvella
