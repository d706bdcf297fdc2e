#pragma once

#include "api/APIClient.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "support/ShownWindow.h"
#include "ui/ad/AdWindowController.h"

#include <QPushButton>
#include <QTest>

#include <memory>
#include <vector>

namespace orvella {

/// An ad whose panel is shown, and what it asks of its owner.
struct AdWindowWorld {
    FakePlatform platform;
    FakeTransport transport;
    APIClient api {platform.lend(), transport};
    Look look {platform.look};
    std::unique_ptr<AdWindowController> controller;
    int dismissals = 0;
    std::vector<std::optional<double>> finished;

    explicit AdWindowWorld(const AvailableAd& ad = anAd())
    {
        transport.answerEverything();
        controller = std::make_unique<AdWindowController>(look, ad, api, true, platform.lend(),
            AdWindowController::OwnerActions {
                .onDismiss = [this] { ++dismissals; },
                .onFinished = [this](std::optional<double> cents) { finished.push_back(cents); },
                .onFailed = [](const Failure&) {},
            });
        controller->show(Popover::Keyboard::left);
        settle();
    }

    [[nodiscard]] QWidget* panel() const { return shownWindow(QStringLiteral("adPanel")); }
    [[nodiscard]] QWidget* disclosure() const { return shownWindow(QStringLiteral("adDisclosure")); }

    template <class T = QPushButton> [[nodiscard]] T* find(const QString& name) const
    {
        return shownWindow(QStringLiteral("adPanel"))->findChild<T*>(name);
    }

    void click(const QString& name)
    {
        QTest::mouseClick(find(name), Qt::LeftButton);
        settle();
    }

    void watchToTheEnd()
    {
        platform.clock.advance(std::chrono::seconds(anAd().requiredSeconds));
        settle();
    }
};

} // namespace orvella
