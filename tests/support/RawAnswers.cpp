#include "support/RawAnswers.h"

namespace orvella::answer {

QByteArray http(int status, const QByteArray& body, const QByteArray& headers)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " Said\r\ncontent-length: " + QByteArray::number(body.size())
        + "\r\n" + headers + "\r\n" + body;
}

RawServer::Answer reply(int status, const QByteArray& body, const QByteArray& headers)
{
    return bytesThenEnd(http(status, body, headers));
}

RawServer::Answer bytesThenEnd(const QByteArray& bytes)
{
    return [bytes](RawConnection& connection, const RawRequest&) {
        connection.send(bytes);
        connection.finish();
    };
}

RawServer::Answer bytesThenReset(const QByteArray& bytes)
{
    return [bytes](RawConnection& connection, const RawRequest&) {
        connection.send(bytes);
        connection.reset();
    };
}

RawServer::Answer bytesThenSilence(const QByteArray& bytes)
{
    return [bytes](RawConnection& connection, const RawRequest&) { connection.send(bytes); };
}

RawServer::Answer bytesThenDrip(const QByteArray& bytes, const QByteArray& dripping, std::chrono::milliseconds pause)
{
    return [bytes, dripping, pause](RawConnection& connection, const RawRequest&) {
        connection.send(bytes);
        connection.drip(dripping, pause);
    };
}

RawServer::Answer silence()
{
    return [](RawConnection&, const RawRequest&) {};
}

} // namespace orvella::answer
