#pragma once

#include "sandbox/Amount.h"
#include "sandbox/Database.h"
#include "sandbox/Offers.h"
#include "sandbox/ServiceTime.h"

#include <optional>
#include <vector>

namespace orvella::sandbox {

/// One view of one ad by one device.
struct Session {
    QString id;
    qint64 requiredSeconds = 0;
    Moment startedAt;

    /// From here on the view counts.
    [[nodiscard]] Moment eligibleAfter() const { return startedAt + std::chrono::seconds(requiredSeconds); }
};

/// What the service says when a session is completed.
struct Verdict {
    bool completed = false;
    QString reason;
    Amount viewerEarn;
    Amount platformFee;
    Amount advertiserCharge;
    /// Whether this very completion made the credit.
    bool isNew = false;
};

/// What a wallet holds.
struct Balances {
    Amount pending;
    Amount available;
    Amount paid;
    Amount lifetime;
};

/// A view as its viewer sees it.
struct View {
    enum class State { watching, credited, notCompleted, refused };

    QString advertiserName;
    QString deviceName;
    Moment startedAt;
    qint64 requiredSeconds = 0;
    /// What was credited, or what would have been.
    Amount viewerEarn;
    State state = State::watching;
    bool clicked = false;
};

/// Who has seen what and what is paid for it.
class Ledger final {
public:
    explicit Ledger(Database& database);

    /// Notes that the device may view the creative once, and what it was chosen by.
    void offer(const QString& deviceId, const QString& creativeId, const QStringList& matchedCategories);
    /// The categories of the offer that stands; nothing where none does.
    [[nodiscard]] std::optional<QStringList> offered(const QString& deviceId, const QString& creativeId);

    [[nodiscard]] ViewingHistory history(const QString& deviceId);

    /// Opens a session at the campaign's prices of now. A viewer looks at one ad at a time: a session of the device
    /// that is still open can no longer be completed.
    [[nodiscard]] Session start(const QString& deviceId, const Offer& offer, bool anonymousMode, Moment now);

    /// Credits the session if its time has come and it has not been credited yet; a session that was credited gives the
    /// same answer again. Nothing where the device has no such session.
    [[nodiscard]] std::optional<Verdict> complete(const QString& deviceId, const QString& sessionId, Moment now);

    /// Notes a click and answers the campaign. Nothing where the device has no such session.
    [[nodiscard]] std::optional<QString> click(const QString& deviceId, const QString& sessionId);

    /// The wallet of a device that belongs to nobody: all of it is pending.
    [[nodiscard]] Balances balancesOfDevice(const QString& deviceId);
    /// The wallet of an account: the credits of all its devices, also those from before they were linked.
    [[nodiscard]] Balances balancesOfViewer(const QString& viewer);

    /// The views of all the account's devices, the newest first.
    [[nodiscard]] std::vector<View> viewsOfViewer(const QString& viewer, Moment now, int atMost);

private:
    std::optional<Verdict> earlierVerdict(const QString& sessionId);

    Database& m_database;
};

} // namespace orvella::sandbox
