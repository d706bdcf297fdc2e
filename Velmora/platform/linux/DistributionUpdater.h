#pragma once

#include "platform/Updater.h"

#include <QMessageBox>
#include <QPointer>

namespace orvella {

/// For a program that came with the system's packages, which bring its updates as well: it checks nothing itself and
/// says so when it is asked.
class DistributionUpdater final : public Updater {
public:
    DistributionUpdater() = default;
    DistributionUpdater(const DistributionUpdater&) = delete;
    DistributionUpdater& operator=(const DistributionUpdater&) = delete;
    ~DistributionUpdater() override;

    void start() override {}

    void checkForUpdates() override;

private:
    /// Goes away when the viewer closes it.
    QPointer<QMessageBox> m_notice;
};

} // namespace orvella
