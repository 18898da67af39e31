#include <platform/linux/transfers/LineSocket.h>

#include <QFile>
#include <QJsonDocument>
#include <QPointer>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace tulvane::transfers {

namespace {

// No message comes near this; a peer that sends more without a line's end is not one of ours.
constexpr qsizetype longestLine = 1024 * 1024;
constexpr qsizetype mostUnsent = 4 * longestLine;

} // namespace

LineSocket::LineSocket(int descriptor, QObject* parent)
    : QObject(parent),
      m_descriptor(descriptor),
      m_readable(descriptor, QSocketNotifier::Read),
      m_writable(descriptor, QSocketNotifier::Write)
{
    m_writable.setEnabled(false);
    connect(&m_readable, &QSocketNotifier::activated, this, &LineSocket::readReady);
    connect(&m_writable, &QSocketNotifier::activated, this, &LineSocket::writeReady);
}

LineSocket::~LineSocket()
{
    close();
}

bool LineSocket::isSameUser(int descriptor)
{
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(descriptor, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

std::unique_ptr<LineSocket> LineSocket::connectTo(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.isEmpty() || name.size() >= static_cast<qsizetype>(sizeof(address.sun_path)))
        return nullptr;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    const int descriptor = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (descriptor < 0)
        return nullptr;
    const auto* const plain = reinterpret_cast<const sockaddr*>(&address);
    if (::connect(descriptor, plain, sizeof(address)) != 0 || !isSameUser(descriptor)) {
        ::close(descriptor);
        return nullptr;
    }
    return std::make_unique<LineSocket>(descriptor);
}

void LineSocket::send(const QJsonObject& message)
{
    if (!isOpen())
        return;
    m_outgoing += QJsonDocument(message).toJson(QJsonDocument::Compact) + '\n';
    if (m_outgoing.size() > mostUnsent)
        drop();
    else
        writeReady();
}

void LineSocket::writeReady()
{
    while (isOpen() && !m_outgoing.isEmpty()) {
        const ssize_t sent = ::send(m_descriptor, m_outgoing.constData(),
                                    static_cast<std::size_t>(m_outgoing.size()), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR)
            continue;
        if (sent < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            break;
        if (sent < 0)
            return drop();
        m_outgoing.remove(0, sent);
    }
    if (isOpen())
        m_writable.setEnabled(!m_outgoing.isEmpty());
}

void LineSocket::readReady()
{
    std::array<char, 65536> buffer{};
    const QPointer<LineSocket> self(this);
    for (;;) {
        const ssize_t got = ::recv(m_descriptor, buffer.data(), buffer.size(), 0);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            return;
        if (got <= 0)
            return drop();
        m_incoming.append(buffer.data(), got);
        takeLines();
        // The receiver may have closed or deleted this.
        if (!self || !isOpen())
            return;
    }
}

void LineSocket::takeLines()
{
    const QPointer<LineSocket> self(this);
    for (;;) {
        const qsizetype end = m_incoming.indexOf('\n');
        if (end < 0)
            break;
        const QJsonDocument line = QJsonDocument::fromJson(m_incoming.left(end));
        m_incoming.remove(0, end + 1);
        if (!line.isObject())
            return drop();
        Q_EMIT received(line.object());
        if (!self || !isOpen())
            return;
    }
    if (m_incoming.size() > longestLine)
        drop();
}

void LineSocket::close()
{
    if (!isOpen())
        return;
    m_readable.setEnabled(false);
    m_writable.setEnabled(false);
    ::close(m_descriptor);
    m_descriptor = -1;
}

void LineSocket::drop()
{
    if (!isOpen())
        return;
    close();
    // Queued: a caller of send() must not find itself told in the middle of its own work.
    QMetaObject::invokeMethod(this, &LineSocket::closed, Qt::QueuedConnection);
}

} // namespace tulvane::transfers
