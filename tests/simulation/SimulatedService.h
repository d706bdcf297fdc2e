#pragma once

#include "api/Records.h"
#include "api/Transport.h"
#include "base/Clock.h"
#include "simulation/Chance.h"
#include "simulation/Journal.h"

#include <map>
#include <optional>

namespace orvella::simulation {

/// The service as its protocol has it: devices, offers, sessions, and the money of one viewer.
class SimulatedService final {
public:
    /// A part of every token.
    static constexpr QLatin1String kTokenMark {"qTk9Zw0s3cr3"};

    SimulatedService(Clock& clock, Chance& chance, Journal& journal);

    /// The program starts. What it may still credit for views of an earlier run, this one cannot know of.
    void beginRun() { ++m_run; }
    /// How often it has credited a view of an earlier run.
    [[nodiscard]] qint64 lateCredits() const { return m_lateCredits; }

    /// Does what the request asks for and answers it.
    [[nodiscard]] HttpReply answer(const HttpRequest& request);

    /// The token of a new device.
    [[nodiscard]] QByteArray issueToken();

    /// The viewer enters the code, or takes the device from the account.
    void changeLink();
    /// What was earned becomes payable, or is paid.
    void settleMoney();

    [[nodiscard]] const WalletResponse& wallet() const { return m_wallet; }
    [[nodiscard]] qint64 creditedViews() const { return m_creditedViews; }

private:
    struct Session {
        AvailableAd ad;
        Instant started;
        int run = 0;
        std::optional<CompletionResponse> verdict;
    };

    [[nodiscard]] HttpReply registerDevice();
    [[nodiscard]] HttpReply available();
    [[nodiscard]] HttpReply startSession(const Json::Object& body);
    [[nodiscard]] HttpReply complete(const Json::Object& body);
    [[nodiscard]] HttpReply click(const Json::Object& body);
    [[nodiscard]] std::optional<qint64> newPace();
    [[nodiscard]] AvailableAd newCreative(int number);

    Clock& m_clock;
    Chance& m_chance;
    Journal& m_journal;
    QByteArrayList m_tokens;
    /// All that is ever offered. An ad does not change while it is on offer.
    std::vector<AvailableAd> m_creatives;
    std::map<QString, Session> m_sessions;
    int m_lastSession = 0;
    WalletResponse m_wallet;
    qint64 m_creditedViews = 0;
    int m_run = 0;
    qint64 m_lateCredits = 0;
    /// How often there is an ad: once in so many questions.
    qint64 m_scarcity;
};

} // namespace orvella::simulation
