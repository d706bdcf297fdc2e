#include "platform/linux/KeyringPrompt.h"

namespace orvella {

KeyringPrompt::KeyringPrompt(GDBusConnection* connection, const QByteArray& owner, const QByteArray& path)
    : m_connection(static_cast<GDBusConnection*>(g_object_ref(connection)))
{
    m_subscriptions = {
        g_dbus_connection_signal_subscribe(connection, owner.constData(), "org.freedesktop.Secret.Prompt", "Completed",
            path.constData(), nullptr, G_DBUS_SIGNAL_FLAGS_NONE, &KeyringPrompt::completed, this, nullptr),
        g_dbus_connection_signal_subscribe(connection, "org.freedesktop.DBus", "org.freedesktop.DBus",
            "NameOwnerChanged", "/org/freedesktop/DBus", owner.constData(), G_DBUS_SIGNAL_FLAGS_NONE,
            &KeyringPrompt::ownerChanged, this, nullptr),
    };
    m_closed = g_signal_connect(connection, "closed", G_CALLBACK(&KeyringPrompt::closed), this);
}

KeyringPrompt::~KeyringPrompt()
{
    for (const auto subscription : m_subscriptions)
        g_dbus_connection_signal_unsubscribe(m_connection.get(), subscription);
    g_signal_handler_disconnect(m_connection.get(), m_closed);
}

void KeyringPrompt::completed(
    GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* arguments, gpointer self)
{
    gboolean isDismissed = TRUE;
    if (g_variant_is_of_type(arguments, G_VARIANT_TYPE("(bv)")))
        g_variant_get(arguments, "(bv)", &isDismissed, nullptr);
    static_cast<KeyringPrompt*>(self)->end(isDismissed ? KeyringTrouble::refused : FromKeyring<>());
}

void KeyringPrompt::ownerChanged(
    GDBusConnection*, const char*, const char*, const char*, const char*, GVariant*, gpointer self)
{
    // A unique name never gets another owner.
    static_cast<KeyringPrompt*>(self)->end(KeyringTrouble::failed);
}

void KeyringPrompt::closed(GDBusConnection*, gboolean, GError*, gpointer self)
{
    static_cast<KeyringPrompt*>(self)->end(KeyringTrouble::absent);
}

void KeyringPrompt::end(FromKeyring<> answer)
{
    m_answer = answer;
    m_over.end();
}

} // namespace orvella
