#pragma once

#include "base/Clock.h"
#include "platform/SecretStore.h"
#include "simulation/Chance.h"
#include "simulation/Journal.h"
#include "support/HeldFlow.h"

#include <map>
#include <memory>
#include <vector>

namespace orvella::simulation {

/// A keyring that answers late, is locked, refuses or is not there, and forgets nothing that was stored for good.
class SimulatedKeyring final : public SecretStore {
public:
    SimulatedKeyring(Clock& clock, Chance& chance, Journal& journal);

    QCoro::Task<std::optional<Secret>> read(QString service, QString account, std::stop_token stop) override;
    QCoro::Task<Finding> look(QString service, QString account) override;
    QCoro::Task<> add(QString service, QString account, Secret value) override;
    QCoro::Task<> remove(QString service, QString account) override;

    /// What the viewer or the desktop does to it.
    void changeMood();
    /// The program has ended: what it waited for comes to nothing, and the next run knows nothing of what this one was
    /// told.
    void endRun();

    /// Calls that have not been answered yet.
    [[nodiscard]] int waiting() const { return m_reading + m_changing; }
    /// Those of them that ask for an item. A change goes on when its flow is over.
    [[nodiscard]] int reading() const { return m_reading; }
    /// Whether this run has read or stored this token.
    [[nodiscard]] bool knows(const QByteArray& token) const;
    /// Whether it has any.
    [[nodiscard]] bool knowsAny() const { return !m_known.empty(); }

    /// Puts an item there as an earlier version of the program did.
    void put(const QString& service, const QByteArray& value) { m_items.insert_or_assign(service, value); }

    /// Whether the last reading found nothing, so that a registration is due.
    [[nodiscard]] bool hasFoundNothing() const { return m_hasFoundNothing; }

private:
    enum class Mood { open, slow, locked, refusing, absent };

    /// False where the program has ended meanwhile.
    QCoro::Task<bool> isChanged(QString event);
    [[nodiscard]] bool keepsChanges() const { return m_mood != Mood::refusing && m_mood != Mood::absent; }
    [[nodiscard]] std::optional<Secret> found(const QString& service);
    /// Whether a call has to wait.
    [[nodiscard]] bool isBusy() const;
    HeldFlow::Wait answered(std::stop_token stop);
    void answerLocked();
    void answerLater(const std::shared_ptr<HeldFlow>& call);

    Clock& m_clock;
    Chance& m_chance;
    Journal& m_journal;
    Mood m_mood = Mood::open;
    std::map<QString, QByteArray> m_items;
    std::map<QString, QByteArray> m_known;
    /// The calls that wait for another mood.
    std::vector<std::shared_ptr<HeldFlow>> m_locked;
    /// Also those that are answered soon.
    std::vector<std::weak_ptr<HeldFlow>> m_waiting;
    /// One answer comes after the other.
    Instant m_answersUntil;
    int m_reading = 0;
    int m_changing = 0;
    int m_run = 0;
    bool m_hasFoundNothing = false;
};

} // namespace orvella::simulation
