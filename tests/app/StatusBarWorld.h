#pragma once

#include "app/StatusBarController.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QApplication>
#include <QWidget>

#include <memory>

namespace orvella {

/// A controller with its status item, a service that answers everything, and the windows that it shows.
struct StatusBarWorld {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<StatusBarController> controller;

    StatusBarWorld()
    {
        platform.secrets.put(Keychain::kService, "token");
        transport.answerEverything();
    }

    void start()
    {
        controller = std::make_unique<StatusBarController>(platform.lend(), transport);
        settle();
    }

    void startWithOffer()
    {
        transport.answer(endpoints::kAdsAvailable, anOffer());
        start();
    }

    void click()
    {
        platform.statusItem.handlers.clicked();
        settle();
    }

    [[nodiscard]] QString description() const { return platform.statusItem.appearances.back().description; }

    [[nodiscard]] static QWidget* panel() { return window(QStringLiteral("adPanel")); }

    [[nodiscard]] static QWidget* menu() { return window(QStringLiteral("menuPanel")); }

private:
    [[nodiscard]] static QWidget* window(const QString& name)
    {
        for (auto* const candidate : QApplication::topLevelWidgets()) {
            if (candidate->objectName() == name && candidate->isVisible())
                return candidate;
        }
        return nullptr;
    }
};

} // namespace orvella
