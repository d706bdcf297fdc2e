#pragma once

#include "api/Transport.h"
#include "fleet/Arrivals.h"
#include "simulation/Chance.h"

#include <optional>
#include <stop_token>

namespace orvella::fleet {

/// The service, as far as its load goes: it knows every device, has no ads and counts what reaches it.
class ModelService final {
public:
    enum class Condition {
        answering,
        /// Every request is refused at once.
        refusing,
        /// Requests are taken, and those that still wait are answered together once it answers again.
        holding,
    };

    explicit ModelService(const Clock& clock);

    void setCondition(Condition condition);
    [[nodiscard]] Condition condition() const { return m_condition; }
    /// Requested when the service answers again. Only while it is `holding`.
    [[nodiscard]] std::stop_token answersAgain() const { return m_answersAgain.get_token(); }

    /// From now on every answer names a pause of its own, by chance between these bounds in seconds. Before, none does.
    void spreadPauses(qint64 shortest, qint64 longest);

    /// A request has come.
    void note(const QString& path) { m_arrivals.note(m_clock.now(), path); }
    [[nodiscard]] HttpReply answer(const QString& path);

    [[nodiscard]] const Arrivals& arrivals() const { return m_arrivals; }

private:
    struct Pauses {
        qint64 shortest;
        qint64 longest;
    };

    const Clock& m_clock;
    Arrivals m_arrivals;
    simulation::Chance m_chance {1};
    Condition m_condition = Condition::answering;
    std::stop_source m_answersAgain;
    std::optional<Pauses> m_pauses;
};

} // namespace orvella::fleet
