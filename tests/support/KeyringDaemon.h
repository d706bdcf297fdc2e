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

    /// Starts it with its keyring unlocked and answers when it is on the bus.
    [[nodiscard]] bool start();
    void kill();
    [[nodiscard]] bool lock();
    [[nodiscard]] bool isLocked() const;

    /// Runs secret-tool, the command-line client of libsecret, and answers what it prints.
    static QByteArray secretTool(const QStringList& arguments, const QByteArray& input = {});

private:
    QProcess m_process;
};

} // namespace orvella
