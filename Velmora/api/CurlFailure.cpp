#include "api/CurlFailure.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>

namespace orvella {

namespace {

using Kind = Failure::Kind;

struct Row {
    long code;
    Kind kind;
    const char* sentence;
};

constexpr auto kContext = "CurlTransport";

// The values of OpenSSL's X509_V_ERR_* (openssl/x509_vfy.h), which are fixed.
constexpr long kNotYetValid = 9;
constexpr long kHasExpired = 10;

// libcurl starts with the second and stores what the handshake finds wrong with the chain, or the first after all went
// well. Either says that the chain is sound, and that it is the name that libcurl does not find in the certificate.
constexpr long kSound = 0;
constexpr long kNothingFound = 1;

constexpr auto kOtherName = QT_TRANSLATE_NOOP("CurlTransport", "The server's certificate belongs to another server.");
constexpr auto kTooEarly = QT_TRANSLATE_NOOP("CurlTransport", "The server's certificate is not valid yet.");
constexpr auto kTooLate = QT_TRANSLATE_NOOP("CurlTransport", "The server's certificate has expired.");

// Every other fault is a lack of trust: self-signed, unknown issuer, bad signature.
constexpr std::array kCertificateFaults {
    Row {kSound, Kind::unreachable, kOtherName},
    Row {kNothingFound, Kind::unreachable, kOtherName},
    Row {kNotYetValid, Kind::unreachable, kTooEarly},
    Row {kHasExpired, Kind::unreachable, kTooLate},
};
constexpr Row kNotTrusted {
    0, Kind::unreachable, QT_TRANSLATE_NOOP("CurlTransport", "The server's certificate is not trusted.")};

constexpr auto kServerNotFound = QT_TRANSLATE_NOOP("CurlTransport", "The server could not be found.");
constexpr auto kProxyNotFound = QT_TRANSLATE_NOOP("CurlTransport", "The proxy could not be found.");
constexpr auto kProxyRefused = QT_TRANSLATE_NOOP("CurlTransport", "The proxy did not connect to the server.");
constexpr auto kNotReached = QT_TRANSLATE_NOOP("CurlTransport", "The server could not be reached.");
constexpr auto kLost = QT_TRANSLATE_NOOP("CurlTransport", "The connection to the server was lost.");
constexpr auto kNotSecure = QT_TRANSLATE_NOOP("CurlTransport", "No secure connection to the server could be made.");
constexpr auto kNoAuthorities =
    QT_TRANSLATE_NOOP("CurlTransport", "The computer's list of trusted certificates could not be read.");
constexpr auto kTimedOut = QT_TRANSLATE_NOOP("CurlTransport", "The request timed out.");
constexpr auto kNotUnderstood = QT_TRANSLATE_NOOP("CurlTransport", "The server's answer could not be understood.");
constexpr auto kTooLarge = QT_TRANSLATE_NOOP("CurlTransport", "The server's answer was too large.");
constexpr auto kBadAddress = QT_TRANSLATE_NOOP("CurlTransport", "The server's address is not valid.");

constexpr std::array kFaults {
    Row {CURLE_OPERATION_TIMEDOUT, Kind::timedOut, kTimedOut},
    Row {CURLE_COULDNT_RESOLVE_HOST, Kind::unreachable, kServerNotFound},
    Row {CURLE_COULDNT_RESOLVE_PROXY, Kind::unreachable, kProxyNotFound},
    Row {CURLE_PROXY, Kind::unreachable, kProxyRefused},
    Row {CURLE_COULDNT_CONNECT, Kind::unreachable, kNotReached},
    Row {CURLE_SEND_ERROR, Kind::unreachable, kLost},
    Row {CURLE_RECV_ERROR, Kind::unreachable, kLost},
    Row {CURLE_GOT_NOTHING, Kind::unreachable, kLost},
    Row {CURLE_PARTIAL_FILE, Kind::unreachable, kLost},
    Row {CURLE_SSL_CONNECT_ERROR, Kind::unreachable, kNotSecure},
    Row {CURLE_SSL_CIPHER, Kind::unreachable, kNotSecure},
    Row {CURLE_SSL_CACERT_BADFILE, Kind::unreachable, kNoAuthorities},
    // Other schemes are turned away before libcurl sees them: this is a reply that is not HTTP.
    Row {CURLE_UNSUPPORTED_PROTOCOL, Kind::badServerResponse, kNotUnderstood},
    Row {CURLE_WEIRD_SERVER_REPLY, Kind::badServerResponse, kNotUnderstood},
    Row {CURLE_BAD_CONTENT_ENCODING, Kind::badServerResponse, kNotUnderstood},
    Row {CURLE_FILESIZE_EXCEEDED, Kind::badServerResponse, kTooLarge},
    Row {CURLE_URL_MALFORMAT, Kind::unreachable, kBadAddress},
};
constexpr Row kOther {
    0, Kind::unreachable, QT_TRANSLATE_NOOP("CurlTransport", "The request to the server did not succeed.")};

template <class Rows> Failure look(const Rows& rows, long code, const Row& otherwise)
{
    const auto found = std::ranges::find(rows, code, &Row::code);
    const auto& row = found == rows.end() ? otherwise : *found;
    return {row.kind, QCoreApplication::translate(kContext, row.sentence)};
}

} // namespace

Failure curlFailure(CURLcode code, long verification)
{
    if (code == CURLE_PEER_FAILED_VERIFICATION)
        return look(kCertificateFaults, verification, kNotTrusted);
    return look(kFaults, code, kOther);
}

Failure answerTooLarge()
{
    return look(kFaults, CURLE_FILESIZE_EXCEEDED, kOther);
}

} // namespace orvella
