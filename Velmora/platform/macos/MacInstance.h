#pragma once

#include "platform/Instance.h"

namespace orvella {

class CocoaApplication;

/// The system itself sees to it that an application runs once, and tells it when it is opened again. That is all that
/// it hands over, so no report is asked for from outside.
class MacInstance final : public Instance {
public:
    explicit MacInstance(CocoaApplication& application);

    [[nodiscard]] bool claim(Request request) override;
    void watch(std::function<void(Request)> requested) override;

    void offerReport(std::function<QCoro::Task<QString>()> /*report*/) override {}

    [[nodiscard]] Running running() const override { return {}; }

private:
    CocoaApplication& m_application;
};

} // namespace orvella
