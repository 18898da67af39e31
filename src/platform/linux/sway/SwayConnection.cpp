#include <base/Log.h>
#include <platform/linux/sway/SwayConnection.h>
#include <platform/linux/sway/SwayMessage.h>

#include <QElapsedTimer>
#include <QJsonArray>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace tulvane {

namespace {

/// -1 where nothing answers.
int connected(const QByteArray& path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.isEmpty() || path.size() >= static_cast<qsizetype>(sizeof address.sun_path))
        return -1;
    std::memcpy(address.sun_path, path.constData(), static_cast<std::size_t>(path.size()));
    const int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (socket >= 0 && connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0)
        return socket;
    if (socket >= 0)
        close(socket);
    return -1;
}

bool sendAll(int socket, const QByteArray& bytes)
{
    const ssize_t sent =
        send(socket, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
    return sent == bytes.size();
}

/// Appends what has come. False at the connection's end.
bool receive(int socket, QByteArray& bytes, int flags)
{
    std::array<char, 16384> piece{};
    const ssize_t size = recv(socket, piece.data(), piece.size(), flags);
    if (size > 0)
        bytes.append(piece.data(), size);
    return size > 0 || (size < 0 && (errno == EAGAIN || errno == EINTR));
}

bool waitForBytes(int socket, int limitMs)
{
    pollfd waiting{socket, POLLIN, 0};
    return limitMs > 0 && poll(&waiting, 1, limitMs) > 0;
}

} // namespace

QByteArray SwayConnection::socketOf(const QProcessEnvironment& environment)
{
    return environment.value(QStringLiteral("SWAYSOCK")).toLocal8Bit();
}

bool SwayConnection::answers(const QByteArray& socket)
{
    const int connection = connected(socket);
    if (connection < 0)
        return false;
    close(connection);
    return true;
}

std::unique_ptr<SwayConnection> SwayConnection::open(const QByteArray& socket)
{
    const int questions = connected(socket);
    if (questions < 0)
        return nullptr;
    const int events = connected(socket);
    if (events < 0) {
        close(questions);
        return nullptr;
    }
    std::unique_ptr<SwayConnection> connection(new SwayConnection(questions, events));
    return connection->subscribe() ? std::move(connection) : nullptr;
}

SwayConnection::SwayConnection(int questions, int events)
    : m_questions(questions),
      m_events(events),
      m_readable(events, QSocketNotifier::Read)
{
    connect(&m_readable, &QSocketNotifier::activated, this, &SwayConnection::readEvents);
}

SwayConnection::~SwayConnection()
{
    m_readable.setEnabled(false);
    close(m_questions);
    close(m_events);
}

bool SwayConnection::subscribe()
{
    const SwayMessage message{static_cast<quint32>(Question::subscribe),
                              QByteArrayLiteral(R"(["binding","mode","workspace","window"])")};
    return sendAll(m_events, message.bytes());
}

std::optional<QJsonDocument> SwayConnection::ask(Question question, const QByteArray& about)
{
    if (m_isBroken || !sendAll(m_questions, SwayMessage{static_cast<quint32>(question), about}.bytes()))
        return std::nullopt;
    QElapsedTimer clock;
    clock.start();
    QByteArray bytes;
    while (waitForBytes(m_questions, answerLimitMs - static_cast<int>(clock.elapsed()))) {
        if (!receive(m_questions, bytes, 0))
            break;
        if (const auto answer = SwayMessage::take(bytes))
            return QJsonDocument::fromJson(answer->body);
    }
    // What comes after the limit would be taken for the next question's answer.
    noticeEnd();
    return std::nullopt;
}

bool SwayConnection::run(const QString& commands)
{
    const auto answers = ask(Question::run, commands.toUtf8());
    if (!answers)
        return false;
    const QJsonArray results = answers->array();
    return std::ranges::all_of(results, [](const QJsonValue& result) {
        return result.toObject().value(QLatin1StringView("success")).toBool();
    });
}

void SwayConnection::readEvents()
{
    if (!receive(m_events, m_pending, MSG_DONTWAIT)) {
        noticeEnd();
        return;
    }
    while (const auto message = SwayMessage::take(m_pending)) {
        // The other messages here answer the subscription.
        constexpr quint32 eventBit = 0x80000000;
        if ((message->type & eventBit) != 0)
            Q_EMIT happened(static_cast<Event>(message->type),
                            QJsonDocument::fromJson(message->body).object());
    }
}

void SwayConnection::noticeEnd()
{
    if (std::exchange(m_isBroken, true))
        return;
    m_readable.setEnabled(false);
    qCWarning(lcApp, "Sway has ended its connection, or does not answer");
    QMetaObject::invokeMethod(this, &SwayConnection::closed, Qt::QueuedConnection);
}

} // namespace tulvane
