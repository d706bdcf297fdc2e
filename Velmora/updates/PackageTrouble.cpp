#include "updates/PackageTrouble.h"

#include <QLatin1StringView>

#include <algorithm>
#include <array>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kMostWords = 300;

/// One paragraph of a bearable length.
QString paragraph(const QString& words)
{
    return words.simplified().left(kMostWords);
}

} // namespace

PackageTrouble troubleOfBus(const QString& errorName)
{
    using enum PackageTrouble::Kind;
    // Nobody has the name, and it cannot be started: by the bus, or by systemd for it.
    static constexpr std::array kAbsences {
        "org.freedesktop.DBus.Error.ServiceUnknown"_L1,
        "org.freedesktop.DBus.Error.NameHasNoOwner"_L1,
        "org.freedesktop.DBus.Error.NoServer"_L1,
        "org.freedesktop.DBus.Error.Disconnected"_L1,
        "org.freedesktop.DBus.Error.Spawn."_L1,
        "org.freedesktop.systemd1."_L1,
    };
    const auto names = [&errorName](QLatin1StringView beginning) { return errorName.startsWith(beginning); };
    if (std::ranges::any_of(kAbsences, names))
        return {absent, {}};
    if (errorName == "org.freedesktop.DBus.Error.AccessDenied"_L1 || errorName.endsWith(".RefusedByPolicy"_L1))
        return {refused, {}};
    if (errorName == "org.freedesktop.DBus.Error.NoReply"_L1)
        return {gone, {}};
    return {failed, {}};
}

PackageTrouble troubleOfCode(uint code, const QString& words)
{
    using enum PackageTrouble::Kind;
    switch (code) {
    case 2: // no-network
        return {noNetwork, {}};
    case 5: // gpg-failure
    case 30: // bad-gpg-signature
    case 31: // missing-gpg-signature
    case 50: // cannot-install-repo-unsigned
    case 51: // cannot-update-repo-unsigned
        return {untrusted, {}};
    case 17: // transaction-cancelled
    case 65: // cancelled-priority
        return {cancelled, {}};
    case 26: // cannot-get-lock
    case 67: // lock-required
        return {busy, {}};
    case 48: // not-authorized
        return {refused, {}};
    default:
        return {failed, paragraph(words)};
    }
}

PackageTrouble troubleOfExit(uint exit)
{
    using enum PackageTrouble::Kind;
    switch (exit) {
    case 3: // cancelled
    case 6: // killed
    case 9: // cancelled-priority
        return {cancelled, {}};
    case 4: // key-required
    case 8: // need-untrusted
        return {untrusted, {}};
    default:
        return {failed, {}};
    }
}

} // namespace orvella
