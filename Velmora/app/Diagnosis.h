#pragma once

#include "core/Keychain.h"
#include "platform/Platform.h"

#include <QCoroTask>
#include <QString>

namespace orvella {

class RecentErrors;

/// What the report of a fault needs: the program, the desktop, the keyring, what the desktop tells of the screen, and
/// what went wrong. It holds no token, no identifier of the device, and no name of the computer, of a user or of an
/// application.
///
/// In English, whatever the viewer's language: somebody else reads it.
class Diagnosis final {
public:
    Diagnosis() = delete;

    /// One fact on each line. `errors` are those of the running program; nothing where none is running.
    static QCoro::Task<QString> text(Platform platform, const RecentErrors* errors);
};

} // namespace orvella
