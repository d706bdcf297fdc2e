#pragma once

#include "api/Records.h"
#include "api/ServiceCall.h"
#include "core/Keychain.h"

#include <functional>

namespace orvella {

class Device;
class SettingsStore;
class Transport;
class ViewerLocale;
struct Platform;

/// The one gateway between the program and the service. Keeps no state of its own: the token is read anew for each
/// call.
///
/// Calls run away from the main thread and resume their callers on it. A call whose `stop` was requested ends at once
/// with a cancellation. Whoever owns the client requests the stop of all calls before it goes.
class APIClient final {
public:
    enum class Authorization { none, deviceToken };

    /// Makes the body of a request when it goes out. Until the device token is there the viewer may have to unlock the
    /// keyring, and may change a setting meanwhile: what is sent is what holds then.
    using Body = std::function<Json::Object()>;

    /// What the service is told of the viewer's wishes.
    struct Preferences {
        bool anonymousMode = true;
        bool appSignalConsent = false;
        bool autoOpenAds = false;

        /// As they stand in the body of each call that tells them.
        [[nodiscard]] Json::Object members() const;
    };

    /// Talks to the address in the setting "apiBaseURL", else to the production service. An address that is none stops
    /// the program, and so does plain http to another computer: it is a mistake of whoever set it.
    APIClient(const Platform& platform, Transport& transport);

    APIClient(const APIClient&) = delete;
    APIClient& operator=(const APIClient&) = delete;

    [[nodiscard]] const QUrl& baseURL() const { return m_baseURL; }

    /// Sends `body` as JSON to `path`. Fails on any status outside 200...299 and on an answer that is not a `T`.
    template <WireRecord T>
    QCoro::Task<Result<T>> post(QString path, Body body, Authorization authorization, std::stop_token stop)
    {
        return exchange<T>({m_baseURL, "POST", std::move(path), {}, {}}, std::move(body), authorization, stop);
    }

    /// Asks for `path`, always with the device token.
    template <WireRecord T> QCoro::Task<Result<T>> get(QString path, std::stop_token stop)
    {
        return exchange<T>({m_baseURL, "GET", std::move(path), {}, {}}, {}, Authorization::deviceToken, stop);
    }

    QCoro::Task<Result<DeviceRegistration>> registerDevice(Preferences preferences, std::stop_token stop);
    /// `current` is asked when the request goes out.
    QCoro::Task<Result<EmptyPayload>> preferences(std::function<Preferences()> current, std::stop_token stop);
    QCoro::Task<Result<AdSession>> startSession(AvailableAd ad, bool anonymousMode, std::stop_token stop);
    QCoro::Task<Result<CompletionResponse>> complete(QString sessionId, std::stop_token stop);
    /// The viewer goes to the advertiser of a session.
    QCoro::Task<Result<ClickResponse>> click(QString sessionId, std::stop_token stop);

    /// The viewer's language as the service is told it, "en" where the locale has none.
    [[nodiscard]] QString language() const;

private:
    template <WireRecord T>
    QCoro::Task<Result<T>> exchange(
        ServiceRequest request, Body body, Authorization authorization, std::stop_token stop)
    {
        auto call = std::make_shared<ServiceCall<T>>(std::move(request));
        co_await run(call, std::move(body), authorization, stop);
        if (stop.stop_requested())
            co_return failed(Failure::Kind::cancelled);
        co_return call->answer();
    }

    QCoro::Task<> run(
        std::shared_ptr<ServiceCallBase> call, Body body, Authorization authorization, std::stop_token stop);

    QUrl m_baseURL;
    Keychain m_keychain;
    Transport& m_transport;
    const Device& m_device;
    const ViewerLocale& m_locale;
};

} // namespace orvella
