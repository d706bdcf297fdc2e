#include "Claim.h"
#include "DrawnRecord.h"
#include "JsonTwins.h"
#include "support/RecordJson.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// A drawn reply reads as the record that was drawn, or fails with the first fault that was put into it.
template <class T> void aReplyReadsAsItWasDrawn(FuzzedDataProvider& bytes)
{
    APIResponse<T> expected;
    const auto drawn = draw(bytes, expected);

    const auto reply = decodeRecord<APIResponse<T>>(QByteArray::fromStdString(drawn.json));

    const auto& [path, problem] = drawn.fault;
    const auto shown = drawn.json + '\n' + (path + u' ' + problem).toStdString() + '\n'
        + (reply ? "" : reply.error().description.toStdString());
    claim(reply.has_value() != static_cast<bool>(drawn.fault), "a reply can be read where it has no fault", shown);
    if (reply) {
        claim(toJson(*reply) == toJson(expected), "a reply reads as it was drawn", shown);
        return;
    }
    const auto description =
        u"The service's answer could not be read: "_s + (path.isEmpty() ? u"it "_s : path + u' ') + problem + u'.';
    claim(reply.error().kind == Failure::Kind::undecodable, "a reply with a fault is undecodable", shown);
    claim(reply.error().description == description, "the failure names the first fault", shown);
}

void aDrawnReplyReads(FuzzedDataProvider& bytes)
{
    switch (bytes.ConsumeIntegralInRange(0, 6)) {
    case 0:
        return aReplyReadsAsItWasDrawn<DeviceRegistration>(bytes);
    case 1:
        return aReplyReadsAsItWasDrawn<WalletResponse>(bytes);
    case 2:
        return aReplyReadsAsItWasDrawn<AvailabilityResponse>(bytes);
    case 3:
        return aReplyReadsAsItWasDrawn<AdSession>(bytes);
    case 4:
        return aReplyReadsAsItWasDrawn<CompletionResponse>(bytes);
    case 5:
        return aReplyReadsAsItWasDrawn<ClickResponse>(bytes);
    default:
        return aReplyReadsAsItWasDrawn<EmptyPayload>(bytes);
    }
}

template <class T> void aRecordHoldsAcrossWriting(const QByteArray& text)
{
    const auto reply = decodeRecord<APIResponse<T>>(text);
    if (!reply) {
        claim(reply.error().kind == Failure::Kind::undecodable, "what cannot be read is undecodable");
        return;
    }
    const auto written = toJson(*reply).serialise();
    claim(written.has_value(), "a record that was read can be written");
    const auto again = decodeRecord<APIResponse<T>>(*written);
    claim(again && toJson(*again) == toJson(*reply), "a record that was written reads the same");
}

bool isSameToQt(const Json& json, QByteArray text)
{
    const QByteArray mark("\xef\xbb\xbf");
    // Qt reads nothing but lists and objects.
    text.insert(text.startsWith(mark) ? mark.size() : 0, '[');
    // It drops this character at the start of a string, where it has none of its meaning.
    if (text.indexOf(mark, 1) > 0)
        return true;
    QJsonParseError trouble;
    const auto document = QJsonDocument::fromJson(text + ']', &trouble);
    // It refuses numbers that a double cannot come near, as 1e-400.
    return trouble.error == QJsonParseError::IllegalNumber || isSameToQt(Json::Array {json}, document.array());
}

/// The bytes as they are, whatever they are.
void aTextIsReadAsItStands(const QByteArray& text)
{
    const auto json = Json::parse(text);
    if (json) {
        claim(isSameToQt(*json, text), "Qt reads the same");
        const auto written = json->serialise();
        claim(written.has_value(), "what was read can be written");
        const auto again = Json::parse(*written);
        claim(again && isSameWhenWritten(*json, *again), "what was written reads the same");
    }
    aRecordHoldsAcrossWriting<DeviceRegistration>(text);
    aRecordHoldsAcrossWriting<WalletResponse>(text);
    aRecordHoldsAcrossWriting<AvailabilityResponse>(text);
    aRecordHoldsAcrossWriting<AdSession>(text);
    aRecordHoldsAcrossWriting<CompletionResponse>(text);
    aRecordHoldsAcrossWriting<ClickResponse>(text);
    aRecordHoldsAcrossWriting<EmptyPayload>(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    aTextIsReadAsItStands(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    FuzzedDataProvider bytes(data, size);
    aDrawnReplyReads(bytes);
    return 0;
}
