#include <platform/fake/FakeBackgroundTransfers.h>

#include <QFile>

#include <algorithm>
#include <utility>

namespace tulvane {

QFuture<QList<TransferTask>> FakeBackgroundTransfers::tasks()
{
    ++m_timesAsked;
    QPromise<QList<TransferTask>> promise;
    promise.start();
    QFuture<QList<TransferTask>> future = promise.future();
    m_asking.push_back(std::move(promise));
    if (!m_holdsTasks)
        answerTasks();
    return future;
}

void FakeBackgroundTransfers::answerTasks()
{
    QList<TransferTask> list = m_tasks;
    for (auto playing = m_playing.cbegin(); playing != m_playing.cend(); ++playing)
        list.append({playing.key(), playing->request.url, playing->received, playing->expected,
                     playing->ending ? TransferTask::State::cancelling : TransferTask::State::running});
    for (QPromise<QList<TransferTask>>& promise : std::exchange(m_asking, {})) {
        promise.addResult(list);
        promise.finish();
    }
}

TransferId FakeBackgroundTransfers::start(const TransferRequest& request)
{
    for (auto playing = m_playing.cbegin(); playing != m_playing.cend(); ++playing) {
        if (playing->request.url == request.url && !playing->ending)
            return playing.key();
    }
    started.append(request);
    const TransferId id = ++m_last;
    if (m_scripts.contains(request.url)) {
        m_playing.insert(id, {request, m_kept.value(request.url), -1, false, false});
        QMetaObject::invokeMethod(this, [this, id] { play(id); }, Qt::QueuedConnection);
    }
    return id;
}

TransferId FakeBackgroundTransfers::resume(const QByteArray& resumeData)
{
    resumed.append(resumeData);
    const QUrl url = QUrl::fromEncoded(resumeData);
    if (m_scripts.contains(url))
        return start({url, {}, 0});
    const TransferId id = ++m_last;
    // Data that no transfer of ours has given; a test that tells by hand gives its own.
    if (!m_scripts.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, id] { tellCompleted(id, TransferError(TransferError::Kind::badAnswer)); },
            Qt::QueuedConnection);
    return id;
}

void FakeBackgroundTransfers::cancel(TransferId id)
{
    cancelled.append(id);
    if (!m_playing.contains(id))
        return;
    m_playing[id].ending = true;
    QMetaObject::invokeMethod(
        this, [this, id] { end(id, TransferError(TransferError::Kind::cancelled)); }, Qt::QueuedConnection);
}

void FakeBackgroundTransfers::discard(const QUrl& url)
{
    discarded.append(url);
    left.removeIf([&](const TransferRemnant& each) { return each.url == url; });
    m_kept.remove(url);
    for (auto playing = m_playing.begin(); playing != m_playing.end(); ++playing) {
        if (playing->request.url != url || playing->discarding)
            continue;
        playing->discarding = true;
        cancel(playing.key());
        return;
    }
}

QList<TransferRemnant> FakeBackgroundTransfers::remnants() const
{
    QList<TransferRemnant> list = left;
    for (auto kept = m_kept.cbegin(); kept != m_kept.cend(); ++kept) {
        if (*kept > 0)
            list.append({kept.key(), *kept});
    }
    return list;
}

void FakeBackgroundTransfers::play(TransferId id)
{
    if (!m_playing.contains(id))
        return;
    Playing& playing = m_playing[id];
    QList<Answer>& answers = m_scripts[playing.request.url];
    const Answer answer = answers.size() > 1 ? answers.takeFirst() : answers.constFirst();
    const qint64 size = answer.body.size();
    playing.expected = size;
    playing.received = answer.cutAfter >= 0 ? std::min(answer.cutAfter, size) : size;
    tellProgress(id, playing.received, size);
    if (answer.hold)
        return;
    if (answer.cutAfter >= 0)
        return end(id, TransferError(TransferError::Kind::connectionLost));
    playing.ending = true;
    tellFinished(id, answer.status, answer.body);
    end(id, std::nullopt);
}

void FakeBackgroundTransfers::end(TransferId id, const std::optional<TransferError>& error)
{
    if (!m_playing.contains(id))
        return;
    const Playing playing = m_playing.take(id);
    const bool keeps = error && !playing.discarding && playing.received > 0;
    m_kept[playing.request.url] = keeps ? playing.received : 0;
    if (keeps)
        tellCompleted(id, error->withResumeData(playing.request.url.toEncoded()));
    else
        tellCompleted(id, error);
}

void FakeBackgroundTransfers::tellProgress(TransferId id, qint64 received, qint64 expected)
{
    if (m_events.progress)
        m_events.progress(id, received, expected);
}

void FakeBackgroundTransfers::tellFinished(TransferId id, int status, const QByteArray& body)
{
    QFile file(m_folder.filePath(QString::number(id)));
    if (!file.open(QIODevice::WriteOnly) || file.write(body) != body.size())
        qFatal("the answer of a faked transfer could not be written");
    file.close();
    tellFinishedFile(id, status, file.fileName());
}

void FakeBackgroundTransfers::tellFinishedFile(TransferId id, int status, const QString& file)
{
    m_lastFile = file;
    m_wasTaken = !m_events.finished || m_events.finished(id, status, file);
    QFile::remove(file);
}

void FakeBackgroundTransfers::tellCompleted(TransferId id, const std::optional<TransferError>& error)
{
    if (m_events.completed)
        m_events.completed(id, error);
}

void FakeBackgroundTransfers::tellEventsDelivered()
{
    if (m_events.eventsDelivered)
        m_events.eventsDelivered();
}

} // namespace tulvane
