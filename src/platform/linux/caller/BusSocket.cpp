#include <platform/linux/caller/BusMessages.h>
#include <platform/linux/caller/BusSocket.h>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>

namespace tulvane {

namespace {

constexpr qsizetype longestLine = 1024;

} // namespace

std::unique_ptr<BusSocket> BusSocket::open(const QByteArray& socket, const QDeadlineTimer& end)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (socket.isEmpty() || socket.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return nullptr;
    std::memcpy(address.sun_path, socket.constData(), static_cast<std::size_t>(socket.size()));
    const auto size =
        static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + static_cast<std::size_t>(socket.size()));
    const int number = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (number < 0)
        return nullptr;
    std::unique_ptr<BusSocket> opened(new BusSocket(number));
    if (connect(number, reinterpret_cast<const sockaddr*>(&address), size) != 0 || !opened->authenticate(end))
        return nullptr;
    return opened;
}

BusSocket::~BusSocket()
{
    close(m_socket);
}

bool BusSocket::authenticate(const QDeadlineTimer& end)
{
    const QByteArray user = QByteArray::number(geteuid()).toHex();
    if (!send(QByteArray(1, '\0') + "AUTH EXTERNAL " + user + "\r\n", end))
        return false;
    while (!m_received.contains("\r\n")) {
        if (m_received.size() > longestLine || !readMore(end))
            return false;
    }
    const bool isTaken = m_received.startsWith("OK ");
    m_received.clear();
    return isTaken && send("BEGIN\r\n", end);
}

bool BusSocket::wait(short events, const QDeadlineTimer& end) const
{
    pollfd entry{m_socket, events, 0};
    int count = -1;
    do {
        count = poll(&entry, 1, static_cast<int>(end.remainingTime()));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

bool BusSocket::send(const QByteArray& bytes, const QDeadlineTimer& end)
{
    qsizetype sent = 0;
    while (m_isOpen && sent < bytes.size() && wait(POLLOUT, end)) {
        const ssize_t count = ::send(m_socket, bytes.constData() + sent,
                                     static_cast<std::size_t>(bytes.size() - sent), MSG_NOSIGNAL);
        if (count > 0)
            sent += count;
        else if (count == 0 || errno != EINTR)
            m_isOpen = false;
    }
    return sent == bytes.size();
}

bool BusSocket::readMore(const QDeadlineTimer& end)
{
    if (!m_isOpen || !wait(POLLIN, end))
        return false;
    std::array<char, 4096> bytes{};
    const ssize_t count = recv(m_socket, bytes.data(), bytes.size(), 0);
    if (count > 0)
        m_received.append(bytes.data(), count);
    else if (count == 0 || errno != EINTR)
        m_isOpen = false;
    return m_isOpen;
}

std::optional<QByteArray> BusSocket::receive(const QDeadlineTimer& end)
{
    while (m_received.size() < busMessages::fixedPart) {
        if (!readMore(end))
            return std::nullopt;
    }
    const auto length = busMessages::length(m_received);
    if (!length)
        return std::nullopt;
    while (m_received.size() < *length) {
        if (!readMore(end))
            return std::nullopt;
    }
    const QByteArray message = m_received.left(*length);
    m_received.remove(0, *length);
    return message;
}

} // namespace tulvane
