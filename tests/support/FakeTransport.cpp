#include "support/FakeTransport.h"

#include "api/Endpoints.h"
#include "support/HeldFlow.h"
#include "support/Samples.h"

#include <QCoreApplication>

#include <algorithm>
#include <optional>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

struct FakeTransport::Held {
    std::optional<Result<HttpReply>> reply;
    HeldFlow call;
};

std::optional<QByteArray> SentRequest::header(const QByteArray& name) const
{
    const auto found = std::ranges::find(http.headers, name, &HttpRequest::Header::first);
    return found == http.headers.end() ? std::nullopt : std::optional(found->second);
}

FakeTransport::HeldReply::HeldReply(std::shared_ptr<Held> held)
    : m_held(std::move(held))
{
}

bool FakeTransport::HeldReply::isAwaited() const
{
    return m_held->call.isWaiting();
}

void FakeTransport::HeldReply::give(Result<HttpReply> reply)
{
    m_held->reply = std::move(reply);
    const auto held = m_held;
    held->call.resume();
    QCoreApplication::sendPostedEvents();
}

QCoro::Task<> FakeTransport::run(std::shared_ptr<Exchange> exchange, std::stop_token stop)
{
    const auto request = exchange->request();
    if (!request) {
        exchange->receive(std::unexpected(request.error()));
        co_return;
    }
    const auto path = request->url.path();
    const auto body = Json::parse(request->body);
    m_requests.push_back({*request, path, body && body->object() ? *body->object() : Json::Object()});

    std::shared_ptr<Held> held;
    if (const auto expected = m_held.extract(path)) {
        held = expected.mapped();
    } else {
        // No answer ever comes within the call itself.
        held = std::make_shared<Held>();
        const auto answer = m_answers.find(path);
        auto reply = answer == m_answers.end() ? Result<HttpReply>(HttpReply {404, {}}) : answer->second;
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [later = HeldReply(held), reply]() mutable { later.give(reply); },
            Qt::QueuedConnection);
    }
    ++m_waiting;
    if (!held->reply)
        co_await held->call.resumedOrStopped(stop);
    --m_waiting;
    if (!stop.stop_requested())
        exchange->receive(*held->reply);
}

void FakeTransport::answer(const QString& path, Result<HttpReply> reply)
{
    m_answers.insert_or_assign(path, std::move(reply));
}

void FakeTransport::fail(const QString& path, const QString& description)
{
    answer(path, failed(Failure::Kind::unreachable, description));
}

void FakeTransport::answerEverything()
{
    answer(endpoints::kRegister, aRegistration());
    answer(endpoints::kHeartbeat, EmptyPayload());
    answer(endpoints::kPreferences, EmptyPayload());
    answer(endpoints::kWallet, aWallet());
    answer(endpoints::kAdsAvailable, noOffer());
    answer(endpoints::kSessionStart, aSession());
    answer(endpoints::kSessionComplete, aCompletion());
    answer(endpoints::kClick, aClick());
}

FakeTransport::HeldReply FakeTransport::hold(const QString& path)
{
    auto held = std::make_shared<Held>();
    m_held.insert_or_assign(path, held);
    return HeldReply(std::move(held));
}

std::vector<SentRequest> FakeTransport::requests(const QString& path) const
{
    std::vector<SentRequest> found;
    std::ranges::copy_if(m_requests, std::back_inserter(found), [&](const auto& sent) { return sent.path == path; });
    return found;
}

qsizetype FakeTransport::count(const QString& path) const
{
    return std::ranges::count(m_requests, path, &SentRequest::path);
}

QStringList FakeTransport::paths() const
{
    QStringList paths;
    for (const auto& request : m_requests)
        paths.append(request.path);
    return paths;
}

QByteArray FakeTransport::envelope(const Json& data)
{
    const auto text = Json(Json::Object {{u"ok"_s, true}, {u"data"_s, data}}).serialise();
    return text.value_or("{}");
}

} // namespace orvella
