#include <base/Log.h>
#include <platform/linux/transfers/DetachedTransfers.h>
#include <platform/linux/transfers/HelperAddress.h>
#include <platform/linux/transfers/TransferMessages.h>
#include <platform/linux/transfers/TransferRecord.h>

#include <QFile>
#include <QJsonArray>
#include <QProcess>

#include <algorithm>
#include <utility>

namespace tulvane {

using transfers::LineSocket;
using transfers::message;
using transfers::numberIn;
using transfers::TransferRecord;

namespace {

using namespace std::chrono_literals;

constexpr auto pollEvery = 20ms;
// A helper that is launched while its predecessor still has the folder ends at once; so it is tried again.
constexpr qint64 pollsPerLaunch = 25;
// A helper that dies so often without a byte of progress in between will not do better.
constexpr int mostLosses = 5;
// Where there is less, the helper could not even take hold of its folder.
constexpr qint64 leastRoom = 64LL * 1024;

} // namespace

DetachedTransfers::DetachedTransfers(const Options& options) : m_options(options), m_folder(options.folder)
{
    m_polling.setInterval(pollEvery);
    connect(&m_polling, &QTimer::timeout, this, &DetachedTransfers::pollForHelper);
}

DetachedTransfers::~DetachedTransfers()
{
    answerTasks({});
}

QFuture<QList<TransferTask>> DetachedTransfers::tasks()
{
    m_folder.dropAbandoned();
    QPromise<QList<TransferTask>> promise;
    promise.start();
    QFuture<QList<TransferTask>> future = promise.future();
    m_asking.push_back(std::move(promise));
    if (m_socket && m_greeted)
        m_socket->send(message("tasks"));
    else if (m_socket || m_polling.isActive())
        return future; // asked when the helper has answered
    else if (m_folder.hasWork())
        connectOrLaunch();
    else if (!connectNow())
        answerTasks({});
    return future;
}

TransferId DetachedTransfers::start(const TransferRequest& wanted)
{
    const QString key = TransferRecord::keyOf(wanted.url);
    const auto [place, isNew] = m_locals.try_emplace(key);
    Local& local = place->second;
    if (isNew) {
        local.id = ++m_last;
        local.request = wanted;
        request(wanted);
    } else if (local.cancelling || local.taken) {
        local.nextId = local.nextId == 0 ? ++m_last : local.nextId;
        local.request = wanted;
        return local.nextId;
    }
    return local.id;
}

void DetachedTransfers::request(const TransferRequest& wanted)
{
    if (m_socket && m_greeted)
        m_socket->send(transfers::startMessage(wanted));
    else if (!m_socket && !m_polling.isActive())
        QMetaObject::invokeMethod(this, &DetachedTransfers::connectOrLaunch, Qt::QueuedConnection);
}

TransferId DetachedTransfers::resume(const QByteArray& resumeData)
{
    if (const auto record = TransferRecord::fromJson(resumeData))
        return start({record->url, record->userAgent, record->sizeHint});
    completeLater(++m_last, TransferError(TransferError::Kind::badAnswer));
    return m_last;
}

void DetachedTransfers::completeLater(TransferId id, const TransferError& error)
{
    QMetaObject::invokeMethod(
        this,
        [this, id, error] {
            if (m_events.completed)
                m_events.completed(id, error);
        },
        Qt::QueuedConnection);
}

void DetachedTransfers::cancel(TransferId id)
{
    for (auto& [key, local] : m_locals) {
        if (local.id == id && !local.cancelling) {
            local.cancelling = true;
            if (m_socket && m_greeted)
                m_socket->send(message("cancel", key));
        } else if (local.nextId == id) {
            local.nextId = 0;
            completeLater(id, TransferError(TransferError::Kind::cancelled));
        }
    }
}

void DetachedTransfers::discard(const QUrl& url)
{
    const QString key = TransferRecord::keyOf(url);
    const auto local = m_locals.find(key);
    if (local != m_locals.end()) {
        local->second.discarding = true;
        cancel(local->second.id);
        cancel(local->second.nextId);
    }
    if (m_socket && m_greeted)
        m_socket->send(message("discard", key));
    else if (local == m_locals.end())
        m_folder.forgetIdle(key);
}

bool DetachedTransfers::connectNow()
{
    QFile keeper(m_folder.keeperFile());
    if (!keeper.open(QIODevice::ReadOnly))
        return false;
    m_socket = LineSocket::connectTo(QString::fromUtf8(keeper.readAll()));
    if (!m_socket)
        return false;
    connect(m_socket.get(), &LineSocket::received, this, &DetachedTransfers::take);
    connect(m_socket.get(), &LineSocket::closed, this, &DetachedTransfers::lost);
    m_greeted = false;
    QJsonObject hello = message("hello");
    hello.insert(QStringLiteral("version"), transfers::protocolVersion);
    m_socket->send(hello);
    return true;
}

void DetachedTransfers::connectOrLaunch()
{
    if (!m_socket && !m_polling.isActive() && !connectNow())
        launch();
}

void DetachedTransfers::launch()
{
    if (!launchOnce())
        return;
    m_pollsLeft = std::max<qint64>(m_options.startTimeout / pollEvery, 1);
    m_polling.start();
}

bool DetachedTransfers::launchOnce()
{
    if (const qint64 free = m_folder.freeSpace(); free < leastRoom) {
        giveUpForRoom(free);
        return false;
    }
    // The helper could only end again, and say nothing.
    if (!m_folder.make()) {
        giveUp(TransferError(TransferError::Kind::unavailable, m_options.folder));
        return false;
    }
    const auto socket = transfers::helperSocketFor(m_options.folder);
    if (!socket) {
        giveUp(TransferError(TransferError::Kind::unavailable, socket.error()));
        return false;
    }
    QProcess helper;
    helper.setProgram(m_options.helper);
    helper.setArguments(
        QStringList{QStringLiteral("--folder"), m_options.folder, QStringLiteral("--socket"), *socket} +
        m_options.helperArguments);
    // Nothing of this program may hold on to it, or be held by it: its streams, its folder, its session.
    helper.setStandardInputFile(QProcess::nullDevice());
    helper.setStandardOutputFile(QProcess::nullDevice());
    helper.setStandardErrorFile(QProcess::nullDevice());
    helper.setWorkingDirectory(QStringLiteral("/"));
    if (helper.startDetached())
        return true;
    giveUp(TransferError(TransferError::Kind::unavailable, m_options.helper));
    return false;
}

void DetachedTransfers::pollForHelper()
{
    if (connectNow()) {
        m_polling.stop();
        return;
    }
    if (--m_pollsLeft > 0) {
        if (m_pollsLeft % pollsPerLaunch == 0 && !launchOnce())
            m_polling.stop();
        return;
    }
    m_polling.stop();
    giveUp(TransferError(TransferError::Kind::unavailable, m_options.helper));
}

void DetachedTransfers::greet()
{
    m_greeted = true;
    for (const auto& [key, local] : m_locals) {
        m_socket->send(local.cancelling ? message("cancel", key) : transfers::startMessage(local.request));
        if (local.discarding)
            m_socket->send(message("discard", key));
    }
    if (!m_asking.empty())
        m_socket->send(message("tasks"));
}

void DetachedTransfers::giveUp(const TransferError& error)
{
    qCCritical(lcModels).noquote() << "Download helper:" << error.description();
    completeAll([&](const Local&) { return error; });
}

void DetachedTransfers::giveUpForRoom(qint64 free)
{
    qCCritical(lcModels) << "Download helper: the disk has no room for it";
    completeAll([free](const Local& local) {
        const qint64 missing = std::max(local.request.sizeHint, leastRoom) - free;
        return TransferError(TransferError::Kind::noSpace, QString::number(missing));
    });
}

void DetachedTransfers::completeAll(const std::function<TransferError(const Local&)>& errorFor)
{
    answerTasks({});
    for (const auto& [key, local] : std::exchange(m_locals, {})) {
        for (const TransferId id : {local.id, local.nextId}) {
            if (id != 0 && m_events.completed)
                m_events.completed(id, errorFor(local));
        }
    }
}

void DetachedTransfers::lost()
{
    m_socket.release()->deleteLater();
    m_greeted = false;
    QStringList done;
    for (const auto& [key, local] : m_locals) {
        if (local.taken)
            done.append(key);
    }
    for (const QString& key : done)
        complete(key, std::nullopt);
    if (m_locals.empty() && m_asking.empty())
        return;
    if (++m_losses > mostLosses)
        return giveUp(TransferError(TransferError::Kind::unavailable, m_options.helper));
    connectOrLaunch();
}

void DetachedTransfers::take(const QJsonObject& message)
{
    const QString op = message.value(u"op").toString();
    if (op == u"hello")
        return takeHello(message);
    if (op == u"tasks")
        return takeTasks(message);
    // In a later turn of the event loop: the caller of `tasks` must have the list before any event of them,
    // or a file that is handed over would find no receiver that knows it.
    QMetaObject::invokeMethod(this, [this, message] { tell(message); }, Qt::QueuedConnection);
}

void DetachedTransfers::tell(const QJsonObject& message)
{
    const QString op = message.value(u"op").toString();
    const QString key = message.value(u"key").toString();
    if (op == u"progress")
        takeProgress(key, message);
    else if (op == u"finished")
        takeFinished(key, message);
    else if (op == u"completed")
        complete(key, transfers::errorIn(message));
    else if (op == u"delivered" && m_events.eventsDelivered)
        m_events.eventsDelivered();
}

void DetachedTransfers::takeHello(const QJsonObject& hello)
{
    if (numberIn(hello, "version", 0) == transfers::protocolVersion)
        return greet();
    // A helper of another version of this program: it ends, and ours goes on with what it leaves.
    m_socket->send(message("leave"));
}

void DetachedTransfers::takeTasks(const QJsonObject& message)
{
    const QJsonArray list = message.value(u"tasks").toArray();
    for (const QJsonValue& value : list) {
        const QJsonObject task = value.toObject();
        const auto request = transfers::requestIn(task);
        if (!request)
            continue;
        const auto [place, isNew] = m_locals.try_emplace(TransferRecord::keyOf(request->url));
        if (isNew) {
            place->second.id = ++m_last;
            place->second.request = *request;
        }
        place->second.received = numberIn(task, "received", 0);
        place->second.expected = numberIn(task, "expected", -1);
    }
    answerTasks(localTasks());
}

QList<TransferTask> DetachedTransfers::localTasks() const
{
    QList<TransferTask> list;
    for (const auto& [key, local] : m_locals) {
        const auto state = local.cancelling ? TransferTask::State::cancelling : TransferTask::State::running;
        list.append({local.id, local.request.url, local.received, local.expected, state});
    }
    return list;
}

void DetachedTransfers::answerTasks(const QList<TransferTask>& list)
{
    auto asking = std::exchange(m_asking, {});
    for (QPromise<QList<TransferTask>>& promise : asking) {
        promise.addResult(list);
        promise.finish();
    }
}

void DetachedTransfers::takeProgress(const QString& key, const QJsonObject& message)
{
    const auto local = m_locals.find(key);
    if (local == m_locals.end())
        return;
    m_losses = 0;
    local->second.received = numberIn(message, "received", 0);
    local->second.expected = numberIn(message, "expected", -1);
    if (m_events.progress)
        m_events.progress(local->second.id, local->second.received, local->second.expected);
}

void DetachedTransfers::takeFinished(const QString& key, const QJsonObject& words)
{
    const auto local = m_locals.find(key);
    if (local == m_locals.end() || local->second.taken)
        return;
    local->second.taken = true;
    const QString file = words.value(u"file").toString();
    const auto status = static_cast<int>(
        std::clamp<qint64>(numberIn(words, "status", 0), 0, transfers::TransferRecord::greatestHttpStatus));
    const bool isTaken = !m_events.finished || m_events.finished(local->second.id, status, file);
    if (isTaken)
        QFile::remove(file);
    if (m_socket)
        m_socket->send(message(isTaken ? "taken" : "kept", key));
}

void DetachedTransfers::complete(const QString& key, const std::optional<TransferError>& error)
{
    const auto ended = m_locals.extract(key);
    if (ended.empty())
        return;
    const Local& local = ended.mapped();
    if (local.nextId != 0) {
        m_locals[key] = Local{.id = local.nextId, .request = local.request};
        request(local.request);
    }
    if (m_events.completed)
        m_events.completed(local.id, error);
}

} // namespace tulvane
