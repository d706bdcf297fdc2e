#pragma once

#include "support/FakeClock.h"
#include "support/FakePackageKit.h"
#include "updates/UpdateFlow.h"

#include <QTest>

#include <memory>

namespace orvella {

/// An update of the program beside others that a played PackageKit knows of, for a test to derive from.
class UpdateFixture {
protected:
    // As PackageKit numbers them.
    static constexpr uint kInstalled = 1;
    static constexpr uint kNormal = 5;
    static constexpr uint kFailed = 2;
    static constexpr uint kCancelled = 3;

    static inline const QString kOld = QStringLiteral("orvella;0.1.0-1;amd64;auto:orvella-stable-main");
    static inline const QString kNew = QStringLiteral("orvella;0.2.0-1;amd64;orvella-stable-main");
    static inline const QString kNewUpdater = QStringLiteral("orvella-updater;0.2.0-1;amd64;orvella-stable-main");
    static inline const QString kForeign = QStringLiteral("firefox-esr;128.0-1;amd64;debian-stable-main");

    static FakePackageKit::Script error(uint code, const QString& words = {})
    {
        return {.error = std::pair(code, words), .exit = kFailed};
    }

    void start(const QList<FakePackageKit::Package>& updates)
    {
        m_packageKit = std::make_unique<FakePackageKit>();
        m_packageKit->scripts = {
            {QStringLiteral("Resolve"), {.packages = {{kInstalled, kOld}}}},
            {QStringLiteral("GetUpdates"), {.packages = updates}},
        };
        m_packageKit->start();
        m_flow = std::make_unique<UpdateFlow>(QDBusConnection::sessionBus(), m_clock);
    }

    void finish()
    {
        m_flow.reset();
        m_packageKit.reset();
        QCOMPARE(m_clock.sleepers(), 0U);
    }

    [[nodiscard]] const UpdateState& state() const { return m_flow->state(); }

    /// Brings the flow to an offer.
    void offer()
    {
        m_flow->check();
        QTRY_COMPARE(state().stage, UpdateState::Stage::available);
    }

    std::unique_ptr<FakePackageKit> m_packageKit;
    FakeClock m_clock;
    std::unique_ptr<UpdateFlow> m_flow;
};

} // namespace orvella
