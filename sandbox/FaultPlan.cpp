#include "sandbox/FaultPlan.h"

#include <QStringList>

#include <optional>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kLongestDelay = 600'000;
constexpr int kLeastStatus = 200;
constexpr int kGreatestStatus = 599;

std::optional<int> number(const QString& text, int least, int most)
{
    auto isNumber = false;
    const auto value = text.toInt(&isNumber);
    return isNumber && value >= least && value <= most ? std::optional(value) : std::nullopt;
}

/// Lays one fault over those that a call has already.
using Change = std::expected<Fault, QString>;

Change changed(Fault fault, const QString& kind, const std::optional<QString>& argument)
{
    if (kind == u"delay") {
        const auto delay = number(argument.value_or(QString()), 0, kLongestDelay);
        if (!delay)
            return std::unexpected(u"delay needs a number of milliseconds up to %1"_s.arg(kLongestDelay));
        fault.delay = std::chrono::milliseconds(*delay);
        return fault;
    }
    if (kind == u"status") {
        const auto status = number(argument.value_or(QString()), kLeastStatus, kGreatestStatus);
        if (!status)
            return std::unexpected(u"status needs a code from %1 to %2"_s.arg(kLeastStatus).arg(kGreatestStatus));
        fault.kind = Fault::Kind::status;
        fault.status = *status;
        return fault;
    }
    if (argument)
        return std::unexpected(u"%1 takes no argument"_s.arg(kind));
    if (kind == u"reset")
        fault.kind = Fault::Kind::reset;
    else if (kind == u"garbage")
        fault.kind = Fault::Kind::garbage;
    else if (kind == u"truncated")
        fault.kind = Fault::Kind::truncated;
    else
        return std::unexpected(u"there is no fault \"%1\""_s.arg(kind));
    return fault;
}

} // namespace

std::expected<void, QString> FaultPlan::add(const QString& specification)
{
    for (const auto& one : specification.split(u',')) {
        if (auto added = addOne(one); !added)
            return added;
    }
    return {};
}

std::expected<void, QString> FaultPlan::addOne(const QString& specification)
{
    const auto equals = specification.indexOf(u'=');
    if (equals < 0)
        return std::unexpected(u"\"%1\" is not CALL=KIND[:ARG]"_s.arg(specification));
    const auto name = specification.first(equals);
    const auto fault = specification.sliced(equals + 1);
    const auto colon = fault.indexOf(u':');
    const auto kind = colon < 0 ? fault : fault.first(colon);
    const auto argument = colon < 0 ? std::nullopt : std::optional(fault.sliced(colon + 1));

    auto isKnown = false;
    for (const auto& route : kCallRoutes) {
        if (name != u"all" && route.name != name)
            continue;
        isKnown = true;
        auto& current = m_faults[static_cast<std::size_t>(route.call)];
        auto change = changed(current, kind, argument);
        if (!change)
            return std::unexpected(std::move(change).error());
        current = *change;
    }
    if (!isKnown)
        return std::unexpected(u"there is no call \"%1\""_s.arg(name));
    return {};
}

} // namespace orvella::sandbox
