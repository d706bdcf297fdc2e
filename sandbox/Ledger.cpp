#include "sandbox/Ledger.h"

#include "sandbox/Credentials.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

// A panel that is still open reports within this time after the view counts.
constexpr auto kCompletionGrace = 60s;

Moment momentOf(const QVariant& stored)
{
    return Moment(std::chrono::milliseconds(stored.toLongLong()));
}

Amount amountOf(const QVariant& stored)
{
    return Amount::ofMicroCents(stored.toLongLong());
}

Verdict refusal(const QString& reason)
{
    Verdict verdict;
    verdict.reason = reason;
    return verdict;
}

QString tooEarly(Moment::duration left)
{
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(left).count();
    return u"The ad must stay in view for %1 more %2."_s.arg(seconds).arg(seconds == 1 ? u"second"_s : u"seconds"_s);
}

View::State stateOf(bool credited, bool replaced, qint64 refusals, Moment eligibleAfter, Moment now)
{
    if (credited)
        return View::State::credited;
    if (!replaced && now < eligibleAfter + kCompletionGrace)
        return View::State::watching;
    return refusals > 0 ? View::State::refused : View::State::notCompleted;
}

QHash<QString, qint64> numbers(const std::vector<Database::Row>& rows)
{
    QHash<QString, qint64> result;
    for (const auto& row : rows)
        result.insert(row[0].toString(), row[1].toLongLong());
    return result;
}

} // namespace

Ledger::Ledger(Database& database)
    : m_database(database)
{
}

void Ledger::offer(const QString& deviceId, const QString& creativeId, const QStringList& matchedCategories)
{
    m_database.run(u"INSERT OR REPLACE INTO offer (device, creative, matchedCategories) VALUES (?, ?, ?)"_s,
        {deviceId, creativeId, matchedCategories.join(u' ')});
}

std::optional<QStringList> Ledger::offered(const QString& deviceId, const QString& creativeId)
{
    const auto categories = m_database.value(
        u"SELECT matchedCategories FROM offer WHERE device = ? AND creative = ?"_s, {deviceId, creativeId});
    if (!categories.isValid())
        return std::nullopt;
    return categories.toString().split(u' ', Qt::SkipEmptyParts);
}

ViewingHistory Ledger::history(const QString& deviceId)
{
    return {
        numbers(m_database.run(u"SELECT session.campaign, MAX(credit.number) FROM credit"
                               " JOIN session ON session.id = credit.session WHERE credit.device = ?"
                               " GROUP BY session.campaign"_s,
            {deviceId})),
        numbers(m_database.run(
            u"SELECT campaign, MAX(number) FROM session WHERE device = ? GROUP BY campaign"_s, {deviceId})),
        numbers(m_database.run(
            u"SELECT creative, MAX(number) FROM session WHERE device = ? GROUP BY creative"_s, {deviceId})),
    };
}

Session Ledger::start(const QString& deviceId, const Offer& offer, bool anonymousMode, Moment now)
{
    const auto& campaign = *offer.campaign;
    const auto session = Session {makeIdentifier(u"ses"_s), campaign.requiredSeconds, now};
    m_database.run(u"UPDATE session SET replaced = 1 WHERE device = ?"_s, {deviceId});
    m_database.run(u"INSERT INTO session (id, device, campaign, creative, advertiserName, matchedCategories,"
                   " anonymousMode, startedAt, requiredSeconds, viewerEarn, platformFee)"
                   " VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
        {session.id, deviceId, campaign.id, offer.creative->id, campaign.advertiserName,
            offer.matchedCategories.join(u' '), anonymousMode, qint64 {now.time_since_epoch().count()},
            session.requiredSeconds, campaign.viewerEarn.microCents(), campaign.platformFee().microCents()});
    return session;
}

std::optional<Verdict> Ledger::complete(const QString& deviceId, const QString& sessionId, Moment now)
{
    const auto rows = m_database.run(u"SELECT startedAt, requiredSeconds, viewerEarn, platformFee, replaced, creative"
                                     " FROM session WHERE id = ? AND device = ?"_s,
        {sessionId, deviceId});
    if (rows.empty())
        return std::nullopt;
    if (auto earlier = earlierVerdict(sessionId))
        return earlier;
    const auto& row = rows.front();
    const auto session = Session {sessionId, row[1].toLongLong(), momentOf(row[0])};
    if (now < session.eligibleAfter()) {
        m_database.run(u"UPDATE session SET refusals = refusals + 1 WHERE id = ?"_s, {sessionId});
        return refusal(tooEarly(session.eligibleAfter() - now));
    }
    if (row[4].toBool()) {
        m_database.run(u"UPDATE session SET refusals = refusals + 1 WHERE id = ?"_s, {sessionId});
        return refusal(u"Another ad was opened on this device."_s);
    }
    const auto earn = amountOf(row[2]);
    const auto fee = amountOf(row[3]);
    m_database.run(u"INSERT INTO credit (session, device, creditedAt, viewerEarn, platformFee, advertiserCharge)"
                   " VALUES (?, ?, ?, ?, ?, ?)"_s,
        {sessionId, deviceId, qint64 {now.time_since_epoch().count()}, earn.microCents(), fee.microCents(),
            (earn + fee).microCents()});
    // The next view needs an offer of its own.
    m_database.run(u"DELETE FROM offer WHERE device = ? AND creative = ?"_s, {deviceId, row[5]});
    auto verdict = earlierVerdict(sessionId);
    if (verdict)
        verdict->isNew = true;
    return verdict;
}

std::optional<QString> Ledger::click(const QString& deviceId, const QString& sessionId)
{
    const auto campaign =
        m_database.value(u"SELECT campaign FROM session WHERE id = ? AND device = ?"_s, {sessionId, deviceId});
    if (!campaign.isValid())
        return std::nullopt;
    m_database.run(u"UPDATE session SET clicks = clicks + 1 WHERE id = ?"_s, {sessionId});
    return campaign.toString();
}

Balances Ledger::balancesOfDevice(const QString& deviceId)
{
    const auto sum = amountOf(m_database.value(u"SELECT SUM(viewerEarn) FROM credit WHERE device = ?"_s, {deviceId}));
    return {.pending = sum, .available = {}, .paid = {}, .lifetime = sum};
}

Balances Ledger::balancesOfViewer(const QString& viewer)
{
    const auto sum = amountOf(m_database.value(u"SELECT SUM(viewerEarn) FROM credit"
                                               " JOIN device ON device.id = credit.device WHERE device.viewer = ?"_s,
        {viewer}));
    return {.pending = {}, .available = sum, .paid = {}, .lifetime = sum};
}

std::vector<View> Ledger::viewsOfViewer(const QString& viewer, Moment now, int atMost)
{
    const auto rows = m_database.run(u"SELECT session.advertiserName, device.name, session.startedAt,"
                                     " session.requiredSeconds, session.viewerEarn, credit.number, session.replaced,"
                                     " session.refusals, session.clicks FROM session"
                                     " JOIN device ON device.id = session.device"
                                     " LEFT JOIN credit ON credit.session = session.id"
                                     " WHERE device.viewer = ? ORDER BY session.number DESC LIMIT ?"_s,
        {viewer, atMost});
    std::vector<View> views;
    for (const auto& row : rows) {
        View view;
        view.advertiserName = row[0].toString();
        view.deviceName = row[1].toString();
        view.startedAt = momentOf(row[2]);
        view.requiredSeconds = row[3].toLongLong();
        view.viewerEarn = amountOf(row[4]);
        view.state = stateOf(!row[5].isNull(), row[6].toBool(), row[7].toLongLong(),
            view.startedAt + std::chrono::seconds(view.requiredSeconds), now);
        view.clicked = row[8].toLongLong() > 0;
        views.push_back(view);
    }
    return views;
}

std::optional<Verdict> Ledger::earlierVerdict(const QString& sessionId)
{
    const auto rows = m_database.run(
        u"SELECT viewerEarn, platformFee, advertiserCharge FROM credit WHERE session = ?"_s, {sessionId});
    if (rows.empty())
        return std::nullopt;
    Verdict verdict;
    verdict.completed = true;
    verdict.reason = u"credited"_s;
    verdict.viewerEarn = amountOf(rows.front()[0]);
    verdict.platformFee = amountOf(rows.front()[1]);
    verdict.advertiserCharge = amountOf(rows.front()[2]);
    return verdict;
}

} // namespace orvella::sandbox
