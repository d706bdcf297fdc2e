#pragma once

#include "core/Keychain.h"
#include "platform/Platform.h"
#include "platform/SystemReport.h"

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

    /// One fact on each line, told by the running program. The errors are needed until this returns only.
    static QCoro::Task<QString> ofRunning(Platform platform, const RecentErrors& errors);

    /// Told by another one: where none runs, or the one that runs does not answer.
    static QCoro::Task<QString> ofOther(Platform platform, bool isAnyRunning);

private:
    static QCoro::Task<QString> withKeyring(Platform platform, std::vector<SystemReport::Fact> facts);
};

} // namespace orvella
