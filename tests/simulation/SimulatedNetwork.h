#pragma once

#include "api/Transport.h"
#include "base/Clock.h"
#include "base/Json.h"
#include "simulation/Chance.h"
#include "simulation/Journal.h"

#include <functional>
#include <memory>
#include <vector>

namespace orvella::simulation {

class SimulatedService;

/// The way to the service and back: slow, unordered, lossy, cut, closed, or answered by somebody else.
class SimulatedNetwork final : public Transport {
public:
    enum class Weather { fair, slow, stormy, lost, closed };

    /// One request on its way.
    struct Call {
        int number = 0;
        HttpRequest request;
        QString path;
        Json::Object body;
        /// What came back in the end.
        std::optional<Result<HttpReply>> reply;
        /// Whether that is what the service answered, and whole.
        bool isTruthful = false;
    };

    SimulatedNetwork(Clock& clock, Chance& chance, Journal& journal, SimulatedService& service);
    ~SimulatedNetwork() override;

    QCoro::Task<> run(std::shared_ptr<Exchange> exchange, std::stop_token stop) override;

    void change();
    [[nodiscard]] Weather weather() const { return m_weather; }
    /// Since when the weather is what it is.
    [[nodiscard]] Instant changed() const { return m_changed; }

    /// Calls whose answer nobody has got yet.
    [[nodiscard]] int waiting() const { return m_waiting; }

    /// Called when a request goes out, and just before its answer is read by whoever made it.
    std::function<void(const Call&)> sent;
    std::function<void(const Call&)> arrives;
    /// Called with every request, for whoever wants to look at them all.
    std::function<void(const HttpRequest&)> captured = [](const HttpRequest& /*request*/) {};

private:
    struct Passage;
    enum class Fate { delivered, lostOnTheWay, lostOnTheWayBack, cut, garbled, answeredBySomebodyElse, silent };

    [[nodiscard]] Fate chooseFate();
    [[nodiscard]] std::chrono::milliseconds latency();
    void send(const std::shared_ptr<Passage>& passage);
    void reachService(const std::shared_ptr<Passage>& passage, Fate fate);
    void arrive(const std::shared_ptr<Passage>& passage, Result<HttpReply> reply, bool isTruthful);
    void later(Clock::duration pause, std::function<void()> happens);
    [[nodiscard]] HttpReply somebodyElse();
    [[nodiscard]] QByteArray garbled(QByteArray body);

    Clock& m_clock;
    Chance& m_chance;
    Journal& m_journal;
    SimulatedService& m_service;
    Weather m_weather = Weather::fair;
    Instant m_changed;
    int m_lastNumber = 0;
    int m_waiting = 0;
};

} // namespace orvella::simulation
