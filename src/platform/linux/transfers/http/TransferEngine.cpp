#include <platform/linux/transfers/http/TransferEngine.h>

#include <algorithm>
#include <utility>

namespace tulvane::transfers {

struct TransferEngine::Job {
    QUrl url;
    TransferRequest request;
    bool cancelled = false;
    qint64 received = 0;
    qint64 expected = -1;
    // The last member: its destructor waits for the thread, which uses the rest.
    std::jthread thread;
};

TransferEngine::TransferEngine(const TransferFolder& folder, const HttpOptions& options, QObject* parent)
    : QObject(parent),
      m_folder(folder),
      m_options(options)
{
}

TransferEngine::~TransferEngine()
{
    stop();
}

void TransferEngine::stop()
{
    for (const auto& [key, job] : m_jobs)
        job->thread.request_stop();
    for (const auto& [key, job] : std::exchange(m_jobs, {})) {
        job->thread.join();
        if (!job->cancelled)
            leaveForTheNext(key, job->request);
    }
}

void TransferEngine::leaveForTheNext(const QString& key, const TransferRequest& request) const
{
    TransferRecord record = m_folder.load(key).value_or(TransferRecord::of(request));
    if (record.state == TransferRecord::State::paused)
        record.state = TransferRecord::State::running;
    static_cast<void>(m_folder.save(record));
}

QString TransferEngine::start(const TransferRequest& request)
{
    TransferRecord record = TransferRecord::of(request);
    const QString key = record.key();
    if (m_jobs.contains(key))
        return key;
    if (const auto left = m_folder.load(key)) {
        record = *left;
        record.userAgent = request.userAgent;
        record.sizeHint = request.sizeHint;
    }
    auto job = std::make_unique<Job>();
    job->url = record.url;
    job->request = request;
    job->expected = record.size;
    run(*job, record);
    m_jobs.emplace(key, std::move(job));
    return key;
}

void TransferEngine::run(Job& job, const TransferRecord& record)
{
    const QString key = record.key();
    // Queued calls to a receiver that is gone are dropped, and the destructor waits for the thread.
    auto report = [this, key](qint64 received, qint64 expected) {
        QMetaObject::invokeMethod(
            this, [this, key, received, expected] { noteProgress(key, received, expected); },
            Qt::QueuedConnection);
    };
    job.thread = std::jthread([this, key, record, report](const std::stop_token& stop) {
        const DownloadEnd end = HttpDownload(m_folder, record, m_options, report).run(stop);
        QMetaObject::invokeMethod(this, [this, key, end] { noteEnd(key, end); }, Qt::QueuedConnection);
    });
}

void TransferEngine::cancel(const QString& key)
{
    const auto job = m_jobs.find(key);
    if (job == m_jobs.end())
        return;
    job->second->cancelled = true;
    job->second->thread.request_stop();
}

QList<TransferEngine::Running> TransferEngine::running() const
{
    QList<Running> list;
    for (const auto& [key, job] : m_jobs)
        list.append({key, job->url, job->received, job->expected});
    return list;
}

void TransferEngine::noteProgress(const QString& key, qint64 received, qint64 expected)
{
    const auto job = m_jobs.find(key);
    if (job == m_jobs.end())
        return;
    job->second->received = received;
    job->second->expected = expected;
    Q_EMIT progressed(key, received, expected);
}

void TransferEngine::noteEnd(const QString& key, const DownloadEnd& end)
{
    // Out of the list first: the receiver may start the same address again.
    const auto job = m_jobs.extract(key);
    if (job.empty())
        return;
    job.mapped()->thread.join();
    if (!end.error) {
        Q_EMIT progressed(key, end.received, std::max(end.record.size, end.received));
        Q_EMIT finished(end.record);
        return;
    }
    const bool keeps = end.received > 0 && !end.record.etag.isEmpty();
    Q_EMIT failed(key, keeps ? end.error->withResumeData(end.record.toJson()) : *end.error);
}

} // namespace tulvane::transfers
