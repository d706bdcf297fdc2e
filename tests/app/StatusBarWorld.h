#pragma once

#include "app/StatusBarController.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "support/ShownWindow.h"

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

    [[nodiscard]] static QWidget* panel() { return shownWindow(QStringLiteral("adPanel")); }

    [[nodiscard]] static QWidget* menu() { return shownWindow(QStringLiteral("menuPanel")); }
};

} // namespace orvella
