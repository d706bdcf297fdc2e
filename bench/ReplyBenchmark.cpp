#include "api/ServiceCall.h"
#include "support/RecordJson.h"
#include "support/Samples.h"

#include <benchmark/benchmark.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kKibibyte = 1024;
/// The longest reply that is read at all.
constexpr qint64 kLongestReply = 1024 * kKibibyte;

/// Reads the reply as a call does, from its bytes to the record.
void receive(benchmark::State& state, const QByteArray& body)
{
    for ([[maybe_unused]] auto round : state) {
        ServiceCall<AvailabilityResponse> call(ServiceRequest {});
        call.receive(HttpReply {200, body});
        if (!call.answer())
            state.SkipWithError("The reply is not read.");
    }
    state.SetComplexityN(state.range(0));
    state.SetBytesProcessed(state.iterations() * body.size());
}

/// How many bytes are left to fill in a reply.
qint64 room(const benchmark::State& state, const Json& data)
{
    return state.range(0) - replyOf(data).size();
}

/// One long text, most of it in more than one byte for each character.
void replyWithALongText(benchmark::State& state)
{
    auto offer = anOffer();
    const auto unit = u"Über 30 €. "_s;
    offer.ad->body = unit.repeated(std::max<qint64>(0, room(state, toJson(offer))) / unit.toUtf8().size());
    receive(state, replyOf(toJson(offer)));
}

/// Many short texts in a list that is read.
void replyWithManyCategories(benchmark::State& state)
{
    auto offer = anOffer();
    const auto unit = u"developer_tools"_s;
    constexpr qint64 kPunctuation = 3;
    const auto count = room(state, toJson(offer)) / (unit.size() + kPunctuation);
    offer.ad->matchedCategories = QStringList(std::max<qint64>(0, count), unit);
    receive(state, replyOf(toJson(offer)));
}

/// Many members that no record knows, in no order.
void replyWithManyUnknownMembers(benchmark::State& state)
{
    const auto offer = toJson(anOffer());
    const auto wanted = room(state, offer);
    QByteArray members;
    // A step that has no factor in common with the number of names comes by every one of them.
    constexpr qint64 kNames = 1'000'000;
    constexpr qint64 kStep = 618'033;
    for (qint64 number = 0; members.size() < wanted; number = (number + kStep) % kNames)
        members += "\"m" + QByteArray::number(number) + "\":0,";
    receive(state, replyOf(offer).replace("\"data\":{", "\"data\":{" + members));
}

BENCHMARK(replyWithALongText)
    ->RangeMultiplier(4)
    ->Range(kKibibyte, kLongestReply)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(replyWithManyCategories)
    ->RangeMultiplier(4)
    ->Range(kKibibyte, kLongestReply)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);
BENCHMARK(replyWithManyUnknownMembers)
    ->RangeMultiplier(4)
    ->Range(kKibibyte, kLongestReply)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);

} // namespace
