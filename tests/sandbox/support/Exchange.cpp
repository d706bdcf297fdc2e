#include "sandbox/support/Exchange.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>

namespace orvella::sandbox {

namespace {

constexpr auto kLongestWait = std::chrono::seconds(10);

} // namespace

Exchange::Exchange(quint16 port, QByteArray bytes)
    : m_socket(socket(AF_INET, SOCK_STREAM, 0))
    , m_unsent(std::move(bytes))
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        m_isOver = true;
    proceed();
}

Exchange::~Exchange()
{
    close(m_socket);
}

HttpAnswer Exchange::answer()
{
    // Both ends are in this one thread, and most answers take less than a millisecond.
    const QDeadlineTimer deadline(kLongestWait);
    while (!m_isOver && !deadline.hasExpired()) {
        QCoreApplication::processEvents();
        QThread::usleep(100);
        proceed();
    }
    if (!m_isOver)
        qWarning("The connection has not ended.");
    auto answer = HttpAnswer::parse(m_received);
    answer.wasReset = m_wasReset;
    return answer;
}

const QByteArray& Exchange::received()
{
    proceed();
    return m_received;
}

void Exchange::proceed()
{
    if (m_isOver)
        return;
    if (!m_unsent.isEmpty()) {
        const auto size = static_cast<std::size_t>(m_unsent.size());
        const auto sent = send(m_socket, m_unsent.constData(), size, MSG_DONTWAIT | MSG_NOSIGNAL);
        m_unsent.remove(0, std::max(sent, ssize_t {0}));
    }
    std::array<char, 65536> buffer {};
    const auto count = recv(m_socket, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (count > 0)
        m_received.append(buffer.data(), count);
    m_wasReset = count < 0 && errno == ECONNRESET;
    m_isOver = count == 0 || m_wasReset;
}

} // namespace orvella::sandbox
