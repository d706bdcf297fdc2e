#pragma once

#include "api/CurlOptions.h"
#include "api/Transport.h"

#include <QObject>

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <unordered_map>

namespace orvella {

/// HTTP and HTTPS over libcurl, on the threads of `QThreadPool::globalInstance()`.
///
/// Each exchange holds one thread of the pool, and one connection of its own, until it is over. Sixteen of them run at
/// once, for which the constructor raises the pool's bound; a thread costs nothing until it is used.
///
/// Redirects are not followed, cookies not kept, certificates always verified, and nothing is sent twice. The proxies
/// are those of the environment (`http_proxy`, `https_proxy`, `all_proxy`, `no_proxy`), and where it names none, those
/// of the desktop.
///
/// Everything but the exchange runs on the thread that made the transport.
class CurlTransport final : public QObject, public Transport {
    Q_OBJECT

public:
    explicit CurlTransport(CurlOptions options = {});

    /// Ends what is under way within moments. The flows that still wait resume here, after their exchanges received a
    /// cancellation, here too.
    ~CurlTransport() override;

    QCoro::Task<> run(std::shared_ptr<Exchange> exchange, std::stop_token stop) override;

Q_SIGNALS:
    /// Says in the main loop that a worker is done with one more call.
    void callEnded(QPrivateSignal);

private:
    class Answer;
    class Call;
    class Desk;
    class Worker;

    struct Waiting {
        std::shared_ptr<Call> call;
        std::coroutine_handle<> flow;
        std::optional<std::stop_callback<std::function<void()>>> onStop;
    };

    void start(std::shared_ptr<Call> call, std::stop_token stop, std::coroutine_handle<> flow);
    void stop(Call* call);
    void deliver();
    void resume(const Call* call);

    CurlOptions m_options;
    std::shared_ptr<Desk> m_desk;
    std::unordered_map<const Call*, Waiting> m_waiting;
};

} // namespace orvella
