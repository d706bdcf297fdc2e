#pragma once

#include "support/FakePackageKit.h"
#include "support/FakePlatform.h"
#include "updates/PackageUpdater.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <memory>

namespace orvella {

/// The updater over a played PackageKit that has a newer version, and its window, for a test to derive from.
class PackageUpdaterFixture {
protected:
    // As PackageKit numbers them.
    static constexpr uint kInstalled = 1;
    static constexpr uint kNormal = 5;

    static inline const QString kNew = QStringLiteral("orvella;0.2.0-1;amd64;orvella-stable-main");

    void start()
    {
        m_packageKit = std::make_unique<FakePackageKit>();
        m_packageKit->scripts = {
            {QStringLiteral("Resolve"), {.packages = {{kInstalled, QStringLiteral("orvella;0.1.0-1;amd64;local")}}}},
            {QStringLiteral("GetUpdates"), {.packages = {{kNormal, kNew}}}},
        };
        m_packageKit->start();
        m_windows.activated.clear();
        m_updater = std::make_unique<PackageUpdater>(QDBusConnection::sessionBus(), m_clock, m_windows);
    }

    void finish()
    {
        m_updater.reset();
        QVERIFY(windows().isEmpty());
        QCOMPARE(m_clock.sleepers(), 0U);
    }

    static QList<QWidget*> windows()
    {
        auto windows = QApplication::topLevelWidgets();
        windows.removeIf([](const QWidget* window) { return !window->isVisible(); });
        return windows;
    }

    template <class T> static T* find(const QString& name)
    {
        auto* const found = windows().isEmpty() ? nullptr : windows().constFirst()->findChild<T*>(name);
        if (!found)
            qFatal("The window has no such part.");
        return found;
    }

    static QString headline() { return find<QLabel>(QStringLiteral("updateHeadline"))->text(); }

    static QString detail() { return find<QLabel>(QStringLiteral("updateDetail"))->text(); }

    static QPushButton* install() { return find<QPushButton>(QStringLiteral("updateInstall")); }

    static QPushButton* close() { return find<QPushButton>(QStringLiteral("updateClose")); }

    static QProgressBar* progress() { return find<QProgressBar>(QStringLiteral("updateProgress")); }

    [[nodiscard]] QStringList installations() const
    {
        return m_packageKit->requests().filter(QStringLiteral("UpdatePackages(2"));
    }

    void offer()
    {
        m_updater->checkForUpdates();
        QTRY_COMPARE(headline(), QStringLiteral("Version 0.2.0 is available."));
    }

    std::unique_ptr<FakePackageKit> m_packageKit;
    FakeClock m_clock;
    FakeWindows m_windows;
    std::unique_ptr<PackageUpdater> m_updater;
};

} // namespace orvella
