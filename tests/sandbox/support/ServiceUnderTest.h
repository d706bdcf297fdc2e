#pragma once

#include "sandbox/Service.h"
#include "sandbox/support/HttpAnswer.h"
#include "support/FakeClock.h"

#include <QStringList>

#include <memory>

namespace orvella::sandbox {

/// A service in virtual time that is reached over real sockets.
class ServiceUnderTest final {
public:
    /// What a device knows of itself after it has registered.
    struct Registered {
        QString deviceId;
        QString token;
        QString code;
    };

    explicit ServiceUnderTest(Service::Setup setup = {});

    /// A request as bytes, as the client would write it.
    [[nodiscard]] QByteArray request(const QByteArray& method, const QString& path, const QString& token,
        const QByteArray& body, const QByteArray& contentType = "application/json") const;

    [[nodiscard]] HttpAnswer send(const QByteArray& bytes) const;
    [[nodiscard]] HttpAnswer post(const QString& path, Json::Object body, const QString& token = {}) const;
    [[nodiscard]] HttpAnswer get(const QString& path, const QString& token = {}) const;
    /// Submits a form, as a browser on the page itself does.
    [[nodiscard]] HttpAnswer submit(const QString& path, const QByteArray& form) const;

    [[nodiscard]] Registered registerDevice(const QString& name = QStringLiteral("desk")) const;
    /// The offer for an anonymous English viewer.
    [[nodiscard]] Json::Object offer(const QString& token) const;
    /// Starts a session for what is offered and answers its record.
    [[nodiscard]] Json::Object start(const QString& token) const;
    /// Views what is offered to the end.
    Json::Object view(const QString& token);

    [[nodiscard]] quint16 port() const;

    [[nodiscard]] Service& service() const { return *m_service; }

    FakeClock clock;
    QStringList lines;

private:
    std::unique_ptr<Service> m_service;
};

/// Where a call is reached.
[[nodiscard]] QString pathOf(Call call);

/// The three settings of an anonymous viewer.
[[nodiscard]] Json::Object anonymousSettings();

/// The three settings of a viewer who shares categories.
[[nodiscard]] Json::Object sharingSettings();

/// The body with which an anonymous viewer's device registers.
[[nodiscard]] Json::Object registrationBody(const QString& name = QStringLiteral("desk"));

/// The body of a heartbeat.
[[nodiscard]] Json::Object heartbeatBody(Json::Object settings, const QStringList& categories, qint64 count);

/// The body of an availability poll.
[[nodiscard]] Json::Object pollBody(Json::Object settings, const QString& language, const QStringList& categories = {});

/// The body that starts a session for an offer.
[[nodiscard]] Json::Object startBody(const Json::Object& offer);

[[nodiscard]] QString text(const Json::Object& object, const QString& name);
[[nodiscard]] qint64 integer(const Json::Object& object, const QString& name);
[[nodiscard]] Json::Object object(const Json::Object& object, const QString& name);

} // namespace orvella::sandbox
