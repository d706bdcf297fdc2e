#pragma once

#include "api/Endpoints.h"
#include "app/AppDelegate.h"
#include "support/FakeMac.h"
#include "support/FakeTransport.h"
#include "support/Outcome.h"
#include "support/Samples.h"
#include "support/ShownWindow.h"

#include <QApplication>
#include <QTest>

#include <map>
#include <memory>
#include <string>

namespace orvella {

/// The whole program on a Mac, without its frameworks and the network.
struct MacWorld {
    FakeMac mac;
    FakeTransport transport;
    std::unique_ptr<AppDelegate> delegate;

    explicit MacWorld(std::map<std::string, PropertyValue> defaults = {{"showLaunchWindowAtStartup", 0.0}})
    {
        mac.defaults.values = std::move(defaults);
        mac.keychain.put({"orvella.device-token", "default", "token"});
        transport.answerEverything();
    }

    void launch()
    {
        delegate = std::make_unique<AppDelegate>(mac.lend(), transport);
        delegate->applicationDidFinishLaunching();
        mac.instance.watch([this](Instance::Request request) { delegate->perform(request); });
        // The keychain answers from another thread.
        QTRY_VERIFY(transport.count(endpoints::kAdsAvailable) > 0);
        settle();
    }

    void launchWithOffer()
    {
        transport.answer(endpoints::kAdsAvailable, anOffer());
        launch();
    }

    /// Until everything that it was asked so far is answered: it answers in the order of the questions.
    void waitForKeychain()
    {
        const Outcome last(mac.secrets.read(QStringLiteral("last"), QStringLiteral("question"), {}));
        QTRY_VERIFY(last.isThere());
        settle();
    }

    void click()
    {
        mac.menuBar.clicked();
        settle();
    }

    [[nodiscard]] FakeCocoaPopover* open(CocoaPopover::Behaviour behaviour)
    {
        for (auto* const popover : mac.menuBar.popovers) {
            if (popover->isShown() && popover->behaviour() == behaviour)
                return popover;
        }
        return nullptr;
    }

    [[nodiscard]] std::string description() const { return mac.menuBar.appearances.back().description; }
};

} // namespace orvella
