#include "sandbox/support/HttpAnswer.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

Json::Object envelope(const QByteArray& body, bool ok)
{
    const auto value = Json::parse(body);
    const auto* const members = value ? value->object() : nullptr;
    if (!members || !members->contains(u"ok"_s) || members->at(u"ok"_s) != Json(ok))
        return {};
    return *members;
}

} // namespace

Json::Object HttpAnswer::data() const
{
    const auto members = envelope(body, true);
    const auto found = members.find(u"data"_s);
    const auto* const data = found == members.end() ? nullptr : found->second.object();
    return status == 200 && data ? *data : Json::Object();
}

QString HttpAnswer::error() const
{
    const auto members = envelope(body, false);
    const auto found = members.find(u"error"_s);
    const auto* const reason = found == members.end() ? nullptr : found->second.string();
    return reason ? *reason : QString();
}

HttpAnswer HttpAnswer::parse(const QByteArray& bytes)
{
    HttpAnswer answer;
    const auto end = bytes.indexOf("\r\n\r\n");
    if (end < 0 || !bytes.startsWith("HTTP/1.1 "))
        return answer;
    answer.status = bytes.sliced(9, 3).toInt();
    answer.body = bytes.sliced(end + 4);
    const auto lines = bytes.first(end).split('\n');
    for (const auto& line : lines.sliced(1)) {
        const auto colon = line.indexOf(':');
        answer.headers.insert(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
    }
    return answer;
}

} // namespace orvella::sandbox
