#include <platform/linux/transfers/HelperAddress.h>
#include <platform/linux/transfers/TransferMessages.h>
#include <platform/linux/transfers/helper/TransferServer.h>

#include <QFile>
#include <QJsonArray>

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>

namespace tulvane::transfers {

using namespace std::chrono_literals;

namespace {

constexpr int mostWaiting = 16;
constexpr mode_t onlyTheUser = 0600;

QJsonObject taskMessage(const QUrl& url, qint64 received, qint64 expected)
{
    QJsonObject task = startMessage({url, {}, 0});
    task.insert(QStringLiteral("received"), received);
    task.insert(QStringLiteral("expected"), expected);
    return task;
}

} // namespace

TransferServer::TransferServer(const Options& options)
    : m_options(options),
      m_engine(TransferFolder(options.folder), options.http)
{
    m_linger.setSingleShot(true);
    m_linger.setInterval(options.linger);
    connect(&m_linger, &QTimer::timeout, this, &TransferServer::idle);
    connect(&m_engine, &TransferEngine::finished, this, &TransferServer::noteFinished);
    connect(&m_engine, &TransferEngine::progressed, this,
            [this](const QString& key, qint64 received, qint64 expected) {
                QJsonObject words = message("progress", key);
                words.insert(QStringLiteral("received"), received);
                words.insert(QStringLiteral("expected"), expected);
                tellAll(words);
            });
    connect(&m_engine, &TransferEngine::failed, this, &TransferServer::noteFailed);
}

TransferServer::~TransferServer()
{
    // The lock goes last: a successor must find neither our downloads at work nor its own socket removed.
    m_engine.stop();
    if (m_listening >= 0) {
        QFile::remove(m_options.socket);
        ::close(m_listening);
    }
    m_lock.reset();
}

bool TransferServer::begin()
{
    if (!m_engine.folder().make() || !lockFolder() || !listen())
        return false;
    restore();
    considerQuitting();
    return true;
}

bool TransferServer::lockFolder()
{
    Result<FileLock, LockError> lock = FileLock::acquire(m_engine.folder().keeperFile(), 0ms);
    if (lock)
        m_lock.emplace(std::move(*lock));
    return lock.has_value();
}

bool TransferServer::listen()
{
    const QByteArray name = QFile::encodeName(m_options.socket);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (name.size() >= static_cast<qsizetype>(sizeof(address.sun_path)))
        return false;
    std::memcpy(address.sun_path, name.constData(), static_cast<std::size_t>(name.size()));
    m_listening = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (m_listening < 0)
        return false;
    ::unlink(name.constData());
    // The process's umask keeps everybody else out from the first moment on.
    if (::bind(m_listening, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        ::chmod(name.constData(), onlyTheUser) != 0 || ::listen(m_listening, mostWaiting) != 0)
        return false;
    // Programs read the address here; written last, when the server answers there.
    const QByteArray path = m_options.socket.toUtf8();
    QFile keeper(m_engine.folder().keeperFile());
    if (!keeper.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || keeper.write(path) != path.size())
        return false;
    m_knocking = std::make_unique<QSocketNotifier>(m_listening, QSocketNotifier::Read);
    connect(m_knocking.get(), &QSocketNotifier::activated, this, &TransferServer::accept);
    return true;
}

void TransferServer::restore()
{
    const TransferFolder& folder = m_engine.folder();
    folder.tidy(m_options.keepPaused);
    for (const TransferRecord& record : folder.records()) {
        if (record.state == TransferRecord::State::running)
            m_engine.start({record.url, record.userAgent, record.sizeHint});
        else if (record.state == TransferRecord::State::finished &&
                 QFile::exists(folder.finishedFile(record)))
            m_untaken.emplace(record.key(), record);
        else if (record.state == TransferRecord::State::finished)
            folder.settle(record); // a program has moved the file and could not say so any more
    }
}

void TransferServer::accept()
{
    const int descriptor = ::accept4(m_listening, nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
    if (descriptor < 0)
        return;
    if (!LineSocket::isSameUser(descriptor)) {
        ::close(descriptor);
        return;
    }
    auto client = std::make_unique<Client>();
    client->socket = std::make_unique<LineSocket>(descriptor);
    LineSocket* const socket = client->socket.get();
    connect(socket, &LineSocket::received, this, [this, socket](const QJsonObject& message) {
        if (Client* const sender = clientOf(socket))
            take(*sender, message);
    });
    connect(socket, &LineSocket::closed, this, [this, socket] { gone(socket); });
    m_clients.push_back(std::move(client));
}

TransferServer::Client* TransferServer::clientOf(const LineSocket* socket)
{
    const auto client =
        std::ranges::find_if(m_clients, [&](const auto& each) { return each->socket.get() == socket; });
    return client == m_clients.end() ? nullptr : client->get();
}

void TransferServer::gone(LineSocket* socket)
{
    std::erase_if(m_starters, [&](const auto& starter) { return starter.second == socket; });
    QStringList offered;
    for (const auto& [key, to] : m_offered) {
        if (to == socket)
            offered.append(key);
    }
    const auto client =
        std::ranges::find_if(m_clients, [&](const auto& each) { return each->socket.get() == socket; });
    if (client != m_clients.end()) {
        (*client)->socket.release()->deleteLater();
        m_clients.erase(client);
    }
    for (const QString& key : offered) {
        m_offered.erase(key);
        // It had moved the file already, and only could not say so.
        if (!QFile::exists(m_engine.folder().finishedFile(m_untaken.at(key))))
            takeTaken(key);
    }
    offerAll();
    considerQuitting();
}

void TransferServer::take(Client& client, const QJsonObject& words)
{
    const QString op = words.value(u"op").toString();
    const QString key = words.value(u"key").toString();
    if (op == u"hello") {
        QJsonObject hello = message("hello");
        hello.insert(QStringLiteral("version"), protocolVersion);
        client.socket->send(hello);
    } else if (op == u"tasks") {
        takeTasks(client);
    } else if (op == u"start") {
        if (const auto request = requestIn(words))
            takeStart(client, *request);
    } else if (op == u"cancel") {
        takeCancel(client, key);
    } else if (op == u"discard") {
        takeDiscard(key);
    } else if (op == u"taken") {
        takeTaken(key);
    } else if (op == u"kept") {
        takeKept(key);
    } else if (op == u"leave") {
        Q_EMIT idle();
    }
}

void TransferServer::takeTasks(Client& client)
{
    QJsonArray tasks;
    for (const TransferEngine::Running& job : m_engine.running())
        tasks.append(taskMessage(job.url, job.received, job.expected));
    for (const auto& [key, record] : m_untaken) {
        const qint64 size = QFile(m_engine.folder().partialFile(key)).size();
        tasks.append(taskMessage(record.url, size, record.size));
    }
    QJsonObject words = message("tasks");
    words.insert(QStringLiteral("tasks"), tasks);
    client.socket->send(words);
    client.attached = true;
    client.owesDelivered = true;
    offerAll();
    considerQuitting();
}

void TransferServer::takeStart(Client& client, const TransferRequest& request)
{
    const QString key = TransferRecord::keyOf(request.url);
    client.attached = true;
    m_starters.try_emplace(key, client.socket.get());
    if (m_untaken.contains(key))
        offerAll();
    else
        m_engine.start(request);
    considerQuitting();
}

void TransferServer::takeCancel(Client& client, const QString& key)
{
    if (m_engine.isRunning(key))
        return m_engine.cancel(key);
    if (m_untaken.contains(key))
        return; // too late: the file is there, and is handed over
    TransferError error(TransferError::Kind::cancelled);
    if (auto record = m_engine.folder().load(key)) {
        record->state = TransferRecord::State::paused;
        static_cast<void>(m_engine.folder().save(*record));
        error = error.withResumeData(record->toJson());
    }
    client.socket->send(completedMessage(key, error));
}

void TransferServer::takeTaken(const QString& key)
{
    const auto record = m_untaken.extract(key);
    m_offered.erase(key);
    m_starters.erase(key);
    if (record.empty())
        return;
    m_engine.folder().settle(record.mapped());
    closeHandover(key);
}

void TransferServer::takeKept(const QString& key)
{
    auto record = m_untaken.extract(key);
    m_offered.erase(key);
    m_starters.erase(key);
    if (record.empty())
        return;
    m_engine.folder().keep(record.mapped());
    closeHandover(key);
}

void TransferServer::closeHandover(const QString& key)
{
    tellAll(completedMessage(key, std::nullopt));
    tellDelivered();
    considerQuitting();
}

void TransferServer::takeDiscard(const QString& key)
{
    if (m_engine.isRunning(key)) {
        m_discarded.insert(key);
        m_engine.cancel(key);
    } else if (!m_untaken.contains(key)) {
        m_engine.folder().forget(key);
    }
}

void TransferServer::noteFailed(const QString& key, const TransferError& error)
{
    m_starters.erase(key);
    const bool isDiscarded = m_discarded.erase(key) > 0;
    if (isDiscarded)
        m_engine.folder().forget(key);
    tellAll(completedMessage(key, isDiscarded ? error.withResumeData({}) : error));
    considerQuitting();
}

void TransferServer::noteFinished(const TransferRecord& record)
{
    if (m_discarded.contains(record.key())) {
        m_engine.folder().forget(record.key());
        return noteFailed(record.key(), TransferError(TransferError::Kind::cancelled));
    }
    m_untaken.emplace(record.key(), record);
    offerAll();
    considerQuitting();
}

void TransferServer::offerAll()
{
    for (const auto& [key, record] : m_untaken) {
        if (m_offered.contains(key))
            continue;
        // The program that asked for it comes first; after that, the one that has been here longest.
        const auto starter = m_starters.find(key);
        Client* to = starter == m_starters.end() ? nullptr : clientOf(starter->second);
        const auto other = std::ranges::find_if(m_clients, [](const auto& each) { return each->attached; });
        if (to == nullptr && other != m_clients.end())
            to = other->get();
        if (to == nullptr)
            break;
        m_offered.emplace(key, to->socket.get());
        QJsonObject words = message("finished", key);
        words.insert(QStringLiteral("status"), record.httpStatus);
        words.insert(QStringLiteral("file"), m_engine.folder().finishedFile(record));
        to->socket->send(words);
    }
    tellDelivered();
}

void TransferServer::tellDelivered()
{
    if (!m_untaken.empty())
        return;
    for (const auto& client : m_clients) {
        if (std::exchange(client->owesDelivered, false))
            client->socket->send(message("delivered"));
    }
}

void TransferServer::tellAll(const QJsonObject& message)
{
    for (const auto& client : m_clients) {
        if (client->attached)
            client->socket->send(message);
    }
}

void TransferServer::considerQuitting()
{
    // What is finished and has no taker waits in the folder; the helper need not stay for it.
    const bool busy = !m_engine.running().isEmpty() || !m_offered.empty();
    if (busy)
        m_linger.stop();
    else if (!m_linger.isActive())
        m_linger.start();
}

} // namespace tulvane::transfers
