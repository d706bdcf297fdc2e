#pragma once

#include "api/APIClient.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/ad/AdViewing.h"

#include <QStringList>

#include <memory>
#include <vector>

namespace orvella {

/// The viewing of one ad, and what it asks of its owner.
struct ViewingWorld {
    /// What `anAd` takes.
    static constexpr auto kRequired = std::chrono::seconds(15);

    FakePlatform platform;
    FakeTransport transport;
    APIClient api {platform.lend(), transport};
    std::unique_ptr<AdViewing> viewing;

    int linksOpened = 0;
    int dismissals = 0;
    int closings = 0;
    std::vector<std::optional<double>> finished;
    QStringList failures;

    ViewingWorld() { transport.answerEverything(); }

    void open(const AvailableAd& ad = anAd(), bool anonymousMode = true)
    {
        viewing = std::make_unique<AdViewing>(ad, api, anonymousMode, platform.clock, platform.browser,
            AdViewing::Actions {
                .keepOpenAfterLink = [this] { ++linksOpened; },
                .dismiss =
                    [this] {
                        ++dismissals;
                        viewing->cancel();
                    },
                .close =
                    [this] {
                        ++closings;
                        viewing->cancel();
                    },
                .onFinished = [this](std::optional<double> cents) { finished.push_back(cents); },
                .onFailed = [this](const Failure& failure) { failures.append(failure.description); },
            });
    }

    void start(const AvailableAd& ad = anAd())
    {
        open(ad);
        viewing->start();
        settle();
    }

    [[nodiscard]] std::vector<std::optional<double>> once(std::optional<double> cents) const { return {cents}; }
};

} // namespace orvella
