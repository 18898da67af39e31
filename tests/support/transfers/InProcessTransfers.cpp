#include <support/transfers/InProcessTransfers.h>

#include <utility>

namespace tulvane {

using transfers::TransferEngine;
using transfers::TransferRecord;

InProcessTransfers::InProcessTransfers(const QString& folder, const transfers::HttpOptions& options)
    : m_engine(transfers::TransferFolder(folder), options)
{
    connect(&m_engine, &TransferEngine::progressed, this,
            [this](const QString& key, qint64 received, qint64 expected) {
                const auto local = m_locals.find(key);
                if (local != m_locals.end() && m_events.progress)
                    m_events.progress(local->second.id, received, expected);
            });
    connect(&m_engine, &TransferEngine::finished, this, &InProcessTransfers::deliver);
    connect(&m_engine, &TransferEngine::failed, this, &InProcessTransfers::complete);
}

QFuture<QList<TransferTask>> InProcessTransfers::tasks()
{
    QList<TransferTask> list;
    for (const TransferEngine::Running& job : m_engine.running()) {
        const Local& local = m_locals.at(job.key);
        const auto state = local.ending ? TransferTask::State::cancelling : TransferTask::State::running;
        list.append({local.id, job.url, job.received, job.expected, state});
    }
    return QtFuture::makeReadyFuture(list);
}

TransferId InProcessTransfers::start(const TransferRequest& request)
{
    const QString key = TransferRecord::keyOf(request.url);
    const auto [place, isNew] = m_locals.try_emplace(key);
    Local& local = place->second;
    if (isNew) {
        local.id = ++m_last;
        m_engine.start(request);
    } else if (local.ending) {
        local.nextId = local.nextId == 0 ? ++m_last : local.nextId;
        local.next = request;
        return local.nextId;
    }
    return local.id;
}

TransferId InProcessTransfers::resume(const QByteArray& resumeData)
{
    if (const auto record = TransferRecord::fromJson(resumeData))
        return start({record->url, record->userAgent, record->sizeHint});
    completeLater(++m_last, TransferError(TransferError::Kind::badAnswer));
    return m_last;
}

void InProcessTransfers::completeLater(TransferId id, const TransferError& error)
{
    QMetaObject::invokeMethod(
        this,
        [this, id, error] {
            if (m_events.completed)
                m_events.completed(id, error);
        },
        Qt::QueuedConnection);
}

void InProcessTransfers::cancel(TransferId id)
{
    for (auto& [key, local] : m_locals) {
        if (local.id == id) {
            local.ending = true;
            m_engine.cancel(key);
        } else if (local.nextId == id) {
            local.nextId = 0;
            completeLater(id, TransferError(TransferError::Kind::cancelled));
        }
    }
}

void InProcessTransfers::discard(const QUrl& url)
{
    const QString key = TransferRecord::keyOf(url);
    const auto local = m_locals.find(key);
    if (local == m_locals.end())
        return m_engine.folder().forget(key);
    local->second.discarding = true;
    cancel(local->second.id);
}

void InProcessTransfers::deliver(const TransferRecord& record)
{
    const auto local = m_locals.find(record.key());
    if (local != m_locals.end())
        local->second.ending = true;
    const bool isTaken =
        local == m_locals.end() || !m_events.finished ||
        m_events.finished(local->second.id, record.httpStatus, m_engine.folder().finishedFile(record));
    if (isTaken)
        m_engine.folder().settle(record);
    else
        m_engine.folder().keep(record);
    complete(record.key(), std::nullopt);
}

void InProcessTransfers::complete(const QString& key, const std::optional<TransferError>& error)
{
    const auto ended = m_locals.extract(key);
    if (ended.empty())
        return;
    const Local& local = ended.mapped();
    if (local.nextId != 0) {
        m_locals[key].id = local.nextId;
        m_engine.start(local.next);
    }
    if (local.discarding)
        m_engine.folder().forget(key);
    if (m_events.completed)
        m_events.completed(local.id, error && local.discarding ? error->withResumeData({}) : error);
}

} // namespace tulvane
