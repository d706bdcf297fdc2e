#pragma once

#include "api/APIClient.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Outcome.h"

namespace orvella {

/// A client, and the service as the test plays it.
struct ClientWorld {
    FakePlatform platform;
    FakeTransport transport;

    ClientWorld() { transport.answerEverything(); }

    [[nodiscard]] APIClient client() { return APIClient(platform.lend(), transport); }

    void useService(const QString& address)
    {
        platform.settings.values.insert_or_assign(QStringLiteral("apiBaseURL"), address);
    }

    /// The answer to a call once the main loop has nothing left to do.
    template <class T> [[nodiscard]] static Result<T> answered(QCoro::Task<Result<T>> task)
    {
        const Outcome<Result<T>> answer(std::move(task));
        settle();
        if (!answer.isThere())
            qFatal("The call still waits.");
        return *answer;
    }
};

} // namespace orvella
