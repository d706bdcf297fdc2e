#pragma once

#include <QProcessEnvironment>
#include <QString>

#include <memory>
#include <optional>

namespace orvella {

class LoginItem;
class XdgDirectories;

/// What a login item has to know of the program's surroundings.
struct LoginItemSurroundings {
    QProcessEnvironment environment;
    const XdgDirectories& directories;
    /// The program's own executable.
    QString executable;
    /// The folder that takes everything the program keeps.
    std::optional<QString> profile;
};

/// The session's autostart entry, or what stands for it in a sandbox. With a profile the session is left alone.
[[nodiscard]] std::unique_ptr<LoginItem> systemLoginItem(const LoginItemSurroundings& surroundings);

} // namespace orvella
