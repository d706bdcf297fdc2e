#pragma once

#include "api/Transport.h"
#include "support/RecordJson.h"

#include <functional>
#include <map>

namespace orvella {

/// A request as it went out, its body read back.
struct SentRequest {
    HttpRequest http;
    QString path;
    Json::Object body;

    [[nodiscard]] std::optional<QByteArray> header(const QByteArray& name) const;
};

/// The service as a test plays it: answers each path as told, when told.
class FakeTransport final : public Transport {
    struct Held;

public:
    /// A call whose answer the test gives when it likes.
    class HeldReply final {
    public:
        /// Whether the call has been made.
        [[nodiscard]] bool isAwaited() const;

        template <WireRecord T> void answer(int status, const T& record)
        {
            give(HttpReply {status, envelope(toJson(record))});
        }

        void give(Result<HttpReply> reply);

    private:
        friend class FakeTransport;
        explicit HeldReply(std::shared_ptr<Held> held);

        std::shared_ptr<Held> m_held;
    };

    QCoro::Task<> run(std::shared_ptr<Exchange> exchange, std::stop_token stop) override;

    /// From now on every call of `path` is answered so.
    void answer(const QString& path, Result<HttpReply> reply);

    template <WireRecord T> void answer(const QString& path, const T& record)
    {
        answer(path, HttpReply {200, envelope(toJson(record))});
    }

    /// From now on every call of `path` fails before an answer comes.
    void fail(const QString& path, const QString& description);

    /// Answers the first cycle of a normal run: registration, wallet, no ad.
    void answerEverything();

    /// The next call of `path` waits for the test.
    [[nodiscard]] HeldReply hold(const QString& path);

    [[nodiscard]] const std::vector<SentRequest>& requests() const { return m_requests; }

    [[nodiscard]] std::vector<SentRequest> requests(const QString& path) const;
    [[nodiscard]] qsizetype count(const QString& path) const;
    /// The paths in the order in which they were asked.
    [[nodiscard]] QStringList paths() const;

    void forgetRequests() { m_requests.clear(); }

    /// How many calls wait for an answer.
    [[nodiscard]] int waiting() const { return m_waiting; }

    [[nodiscard]] static QByteArray envelope(const Json& data);

private:
    std::vector<SentRequest> m_requests;
    std::map<QString, Result<HttpReply>> m_answers;
    std::map<QString, std::shared_ptr<Held>> m_held;
    int m_waiting = 0;
};

} // namespace orvella
