#pragma once

#include <QByteArray>
#include <QProcess>

namespace orvella {

/// A real gnome-keyring-daemon on the test's own session bus, with an empty keyring under the test's own home.
class KeyringDaemon final {
public:
    static constexpr auto kPassword = "open sesame";

    KeyringDaemon();
    KeyringDaemon(const KeyringDaemon&) = delete;
    KeyringDaemon& operator=(const KeyringDaemon&) = delete;
    ~KeyringDaemon();

    /// Starts it with a keyring that is unlocked and answers when it is on the bus.
    [[nodiscard]] bool start();
    /// Starts it as it is at the first login without a password: it has no keyring yet.
    [[nodiscard]] bool startWithoutKeyring();
    void kill();
    [[nodiscard]] bool lock();
    [[nodiscard]] bool isLocked() const;

    /// Runs secret-tool, the command-line client of libsecret, and answers what it prints.
    static QByteArray secretTool(const QStringList& arguments, const QByteArray& input = {});

private:
    [[nodiscard]] bool run(const QStringList& arguments, const QByteArray& input);

    QProcess m_process;
};

} // namespace orvella
