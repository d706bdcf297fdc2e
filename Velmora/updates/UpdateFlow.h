#pragma once

#include "base/Clock.h"
#include "updates/UpdateState.h"

#include <QCoroTask>
#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <stop_token>

namespace orvella {

/// Looks for an update of the program with PackageKit, and has it installed when the viewer wants it.
///
/// Its end withdraws what is under way.
class UpdateFlow final : public QObject {
    Q_OBJECT

public:
    UpdateFlow(QDBusConnection bus, Clock& clock);
    ~UpdateFlow() override;

    [[nodiscard]] const UpdateState& state() const { return m_state; }

    void check();
    /// Only where an update is available.
    void install();

Q_SIGNALS:
    /// The state has changed.
    void changed();

private:
    QCoro::Task<> look(std::stop_token stop);
    QCoro::Task<> update(std::stop_token stop);

    [[nodiscard]] UpdateState::Stage take(const PackageId& installed, const QList<ToldPackage>& updates);
    void enter(UpdateState::Stage stage);
    void fail(UpdateState::Stage stage, const PackageTrouble& trouble);
    [[nodiscard]] std::stop_token startOver();

    QDBusConnection m_bus;
    Clock& m_clock;
    std::stop_source m_stop;
    UpdateState m_state;
    /// The packages of the program that there is an update for.
    QStringList m_updates;
};

} // namespace orvella
