#pragma once

#include "base/Clock.h"
#include "platform/SecretStore.h"
#include "simulation/Chance.h"
#include "simulation/Journal.h"

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
    void change();
    /// A new run of the program knows nothing of what the last one was told.
    void forgetRun();

    /// Calls that have not been answered yet.
    [[nodiscard]] int waiting() const { return m_waiting; }
    /// Whether the last reading found nothing, so that a registration is due.
    [[nodiscard]] bool hasFoundNothing() const { return m_hasFoundNothing; }

    /// What a run may have read or stored.
    [[nodiscard]] const std::map<QString, QByteArray>& items() const { return m_items; }

private:
    enum class Mood { open, slow, locked, refusing, absent };
    struct Reader;
    class Patience;

    [[nodiscard]] std::optional<Secret> found(const QString& service);
    void resumeReaders();
    void answerLater(const std::shared_ptr<Reader>& reader);

    Clock& m_clock;
    Chance& m_chance;
    Journal& m_journal;
    Mood m_mood = Mood::open;
    std::map<QString, QByteArray> m_items;
    std::map<QString, QByteArray> m_known;
    std::vector<std::shared_ptr<Reader>> m_readers;
    /// One answer comes after the other.
    Instant m_answersUntil;
    int m_waiting = 0;
    bool m_hasFoundNothing = false;
};

} // namespace orvella::simulation
