#pragma once

#include "simulation/Chance.h"
#include "simulation/Journal.h"
#include "support/FakePlatform.h"

namespace orvella::simulation {

/// The desktop that the program runs on: its bar and screens come and go, other programs run, the screen is locked or
/// covered, the login item is refused.
class SimulatedDesktop final : public FakeDesktop {
public:
    SimulatedDesktop(Chance& chance, Journal& journal);

    /// Something of it is not as it was.
    void change();
    /// Forgets what it has been told, except for the last of it.
    void tidy();

    /// Whether an ad that opens by itself would disturb.
    [[nodiscard]] bool isViewerBusy() const;

    /// A part of every name and identifier of an application.
    static constexpr QLatin1String kApplicationMark {"Zq7xWv8kPj3m"};

private:
    void changeApplications();
    void changeBar();
    void changeForeground();
    void changeWindows();

    Chance& m_chance;
    Journal& m_journal;
};

} // namespace orvella::simulation
