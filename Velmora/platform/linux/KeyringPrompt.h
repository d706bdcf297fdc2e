#pragma once

#include "platform/linux/FromKeyring.h"
#include "platform/linux/GLibPointers.h"
#include "platform/linux/SharedWait.h"

#include <QByteArray>

#include <array>

namespace orvella {

/// Listens for the end of one prompt of the Secret Service, from before it is shown.
///
/// In place of libsecret's own: that one (0.20) never ends when the service goes away under the prompt, and does not
/// say that the viewer dismissed it.
class KeyringPrompt final {
public:
    /// `owner` is the unique bus name of the service, `path` that of the prompt.
    KeyringPrompt(GDBusConnection* connection, const QByteArray& owner, const QByteArray& path);
    KeyringPrompt(const KeyringPrompt&) = delete;
    KeyringPrompt& operator=(const KeyringPrompt&) = delete;
    /// Listens no more. The prompt itself stays.
    ~KeyringPrompt();

    /// Waits in a coroutine for the viewer, or for the service to go away.
    [[nodiscard]] SharedWait::Wait wait(std::stop_token stop) { return m_over.wait(std::move(stop)); }

    /// Afterwards: nothing wrong where the viewer agreed.
    [[nodiscard]] FromKeyring<> answer() const { return m_answer; }

private:
    static void completed(GDBusConnection*, const char* sender, const char* path, const char* interface,
        const char* signal, GVariant* arguments, gpointer self);
    static void ownerChanged(GDBusConnection*, const char* sender, const char* path, const char* interface,
        const char* signal, GVariant* arguments, gpointer self);
    static void closed(GDBusConnection*, gboolean isPeerGone, GError* error, gpointer self);

    void end(FromKeyring<> answer);

    GLibPointer<GDBusConnection> m_connection;
    std::array<guint, 2> m_subscriptions {};
    gulong m_closed = 0;
    FromKeyring<> m_answer = KeyringTrouble::stopped;
    SharedWait m_over;
};

} // namespace orvella
