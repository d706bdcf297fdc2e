#pragma once

#include "api/Record.h"

namespace orvella {

// What the service answers. The strings are the contract with the service. Money is in whole US-dollar cents, but
// members whose names end in Exact are cents with a fraction.

/// A newly registered device.
struct DeviceRegistration {
    QString deviceId;
    Secret deviceToken;
    /// What the viewer enters at `verificationUri` to link the device to an account.
    QString activationCode;
    QString verificationUri;
    qint64 pollSeconds = 0;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"deviceId", &DeviceRegistration::deviceId},
            Field {"deviceToken", &DeviceRegistration::deviceToken},
            Field {"activationCode", &DeviceRegistration::activationCode},
            Field {"verificationUri", &DeviceRegistration::verificationUri},
            Field {"pollSeconds", &DeviceRegistration::pollSeconds},
        };
    }
};

struct Wallet {
    qint64 pendingCents = 0;
    qint64 availableCents = 0;
    qint64 paidCents = 0;
    qint64 lifetimeCents = 0;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"pendingCents", &Wallet::pendingCents},
            Field {"availableCents", &Wallet::availableCents},
            Field {"paidCents", &Wallet::paidCents},
            Field {"lifetimeCents", &Wallet::lifetimeCents},
        };
    }
};

struct WalletResponse {
    /// Whether the device belongs to a viewer account.
    bool linked = false;
    Wallet wallet;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"linked", &WalletResponse::linked},
            Field {"wallet", &WalletResponse::wallet},
        };
    }
};

/// One ad on offer.
struct AvailableAd {
    QString campaignId;
    QString creativeId;
    QString advertiserName;
    QString body;
    QString ctaLabel;
    QString targetUrl;
    QString language;
    /// How long the ad must stay in view before its completion counts.
    qint64 requiredSeconds = 0;
    /// The broad categories that matched; empty when the delivery was broad.
    QStringList matchedCategories;
    qint64 advertiserChargeCents = 0;
    qint64 viewerEarnCents = 0;
    qint64 platformFeeCents = 0;
    std::optional<double> viewerEarnCentsExact;
    std::optional<double> platformFeeCentsExact;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"campaignId", &AvailableAd::campaignId},
            Field {"creativeId", &AvailableAd::creativeId},
            Field {"advertiserName", &AvailableAd::advertiserName},
            Field {"body", &AvailableAd::body},
            Field {"ctaLabel", &AvailableAd::ctaLabel},
            Field {"targetUrl", &AvailableAd::targetUrl},
            Field {"language", &AvailableAd::language},
            Field {"requiredSeconds", &AvailableAd::requiredSeconds},
            Field {"matchedCategories", &AvailableAd::matchedCategories},
            Field {"advertiserChargeCents", &AvailableAd::advertiserChargeCents},
            Field {"viewerEarnCents", &AvailableAd::viewerEarnCents},
            Field {"platformFeeCents", &AvailableAd::platformFeeCents},
            Field {"viewerEarnCentsExact", &AvailableAd::viewerEarnCentsExact},
            Field {"platformFeeCentsExact", &AvailableAd::platformFeeCentsExact},
        };
    }

    friend bool operator==(const AvailableAd&, const AvailableAd&) = default;
};

/// The answer to the question whether there is an ad.
struct AvailabilityResponse {
    bool available = false;
    /// A new pause between two questions, when the service wants one.
    std::optional<qint64> pollSeconds;
    std::optional<AvailableAd> ad;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"available", &AvailabilityResponse::available},
            Field {"pollSeconds", &AvailabilityResponse::pollSeconds},
            Field {"ad", &AvailabilityResponse::ad},
        };
    }
};

/// One view of an ad, as the service counts it.
struct AdSession {
    QString sessionId;
    qint64 requiredSeconds = 0;
    /// The service's time from which it accepts the completion; text that nobody reads here.
    QString eligibleAfter;
    QString targetUrl;
    qint64 viewerEarnCents = 0;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"sessionId", &AdSession::sessionId},
            Field {"requiredSeconds", &AdSession::requiredSeconds},
            Field {"eligibleAfter", &AdSession::eligibleAfter},
            Field {"targetUrl", &AdSession::targetUrl},
            Field {"viewerEarnCents", &AdSession::viewerEarnCents},
        };
    }
};

/// The service's verdict on a view.
struct CompletionResponse {
    /// Whether the view was credited.
    bool completed = false;
    QString reason;
    qint64 viewerEarnCents = 0;
    qint64 platformFeeCents = 0;
    qint64 advertiserChargeCents = 0;
    std::optional<double> viewerEarnCentsExact;
    std::optional<double> platformFeeCentsExact;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"completed", &CompletionResponse::completed},
            Field {"reason", &CompletionResponse::reason},
            Field {"viewerEarnCents", &CompletionResponse::viewerEarnCents},
            Field {"platformFeeCents", &CompletionResponse::platformFeeCents},
            Field {"advertiserChargeCents", &CompletionResponse::advertiserChargeCents},
            Field {"viewerEarnCentsExact", &CompletionResponse::viewerEarnCentsExact},
            Field {"platformFeeCentsExact", &CompletionResponse::platformFeeCentsExact},
        };
    }
};

struct ClickResponse {
    /// The page to open, perhaps by way of a redirect.
    QString targetUrl;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"targetUrl", &ClickResponse::targetUrl},
        };
    }
};

/// An answer that carries nothing.
struct EmptyPayload {
    static constexpr auto fields() { return std::tuple {}; }
};

/// The envelope of every answer.
template <class T> struct APIResponse {
    /// Deliberate: never looked at, the status code alone decides.
    bool ok = false;
    T data;

    static constexpr auto fields()
    {
        return std::tuple {
            Field {"ok", &APIResponse::ok},
            Field {"data", &APIResponse::data},
        };
    }
};

} // namespace orvella
