#include <platform/linux/transfers/http/HttpDownload.h>

#include <QFile>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace tulvane::transfers {

namespace {

constexpr int httpOk = 200;
constexpr int unauthorized = 401;
constexpr int forbidden = 403;
constexpr int mostDoublings = 6;
// A server that answers for the wrong range is asked for the whole file, but not for ever.
constexpr int mostRestarts = 2;
// More than one block of any file system.
constexpr qint64 roomForARecord = 64LL * 1024;

/// Waits, unless it is stopped first.
void pause(std::chrono::milliseconds time, const std::stop_token& stop)
{
    std::mutex mutex;
    std::condition_variable_any condition;
    std::unique_lock lock(mutex);
    condition.wait_for(lock, stop, time, [] { return false; });
}

bool isWorthAnotherTry(const TransferError& error)
{
    using Kind = TransferError::Kind;
    return error.kind() == Kind::connectionLost || error.kind() == Kind::timedOut ||
           error.kind() == Kind::cannotConnect || error.kind() == Kind::hostNotFound;
}

} // namespace

HttpDownload::HttpDownload(const TransferFolder& folder, const TransferRecord& record,
                           const HttpOptions& options, ProgressReport report)
    : m_folder(folder),
      m_record(record),
      m_options(options),
      m_report(std::move(report))
{
}

DownloadEnd HttpDownload::run(const std::stop_token& stop)
{
    m_deadline = std::chrono::steady_clock::now() + m_options.totalTimeout;
    if (!m_folder.make())
        return {m_record, 0, TransferError(TransferError::Kind::notWritten, m_folder.path())};
    auto partial = PartialFile::open(m_folder.partialFile(m_record.key()));
    // Without the lock, nothing of this record is ours to write.
    if (!partial)
        return {m_record, 0, partial.error()};
    m_partial = *std::move(partial);
    if (const auto begun = begin(); !begun)
        return ended({Try::Kind::failed, begun.error()});
    if (canGoOn() && m_record.size == m_partial.size())
        return ended(finish(httpOk, false));
    return ended(tryAll(stop));
}

Result<void, TransferError> HttpDownload::begin()
{
    if (auto dropped = dropUnsafeBytes(); !dropped)
        return dropped;
    if (auto room = checkRoom(); !room)
        return room;
    m_record.state = TransferRecord::State::running;
    m_record.boot = currentBoot();
    m_record.httpStatus = 0;
    m_record.aside = false;
    if (m_folder.save(m_record))
        return {};
    return failure(TransferError(TransferError::Kind::notWritten, m_folder.recordFile(m_record.key())));
}

Result<void, TransferError> HttpDownload::dropUnsafeBytes()
{
    if (m_partial.size() > expected(0).most())
        return m_partial.cutTo(0);
    const bool machineRestarted = m_record.boot != currentBoot();
    if (machineRestarted && m_partial.size() > m_record.safeBytes)
        return m_partial.cutTo(m_record.safeBytes);
    return {};
}

bool HttpDownload::canGoOn() const
{
    return m_partial.size() > 0 && isStrong(m_record.etag) && !m_distrustsBytes &&
           (m_record.size < 0 || m_partial.size() <= m_record.size);
}

Result<void, TransferError> HttpDownload::checkRoom() const
{
    const qint64 whole = m_record.size > 0 ? m_record.size : m_record.sizeHint;
    const qint64 missing = std::max<qint64>(whole - m_partial.size(), 0);
    const qint64 lacking = missing + m_options.reserve - m_partial.freeSpace();
    if (lacking <= 0 || missing == 0)
        return {};
    return failure(TransferError(TransferError::Kind::noSpace, QString::number(lacking)));
}

HttpDownload::Try HttpDownload::tryAll(const std::stop_token& stop)
{
    int fruitless = 0;
    for (;;) {
        const qint64 before = m_partial.size();
        Try last = tryOnce(stop);
        if (last.kind == Try::Kind::again)
            continue;
        if (last.kind != Try::Kind::broken)
            return last;
        fruitless = m_partial.size() > before ? 0 : fruitless;
        if (fruitless >= m_options.retries || std::chrono::steady_clock::now() >= m_deadline)
            return {Try::Kind::failed, last.error};
        pause(m_options.retryPause * (1 << std::min(fruitless, mostDoublings)), stop);
        if (stop.stop_requested())
            return {Try::Kind::failed, TransferError(TransferError::Kind::cancelled)};
        ++fruitless;
    }
}

Held HttpDownload::expected(qint64 from) const
{
    return {from, m_partial.size(), m_record.etag, m_record.size, m_record.sizeHint};
}

HttpCall HttpDownload::call(const Held& held) const
{
    HttpCall call;
    call.url = m_record.url;
    call.headers = {"User-Agent: " + m_record.userAgent, "Accept: */*", "Accept-Encoding: identity"};
    if (held.asked > 0)
        call.headers << "Range: bytes=" + QByteArray::number(held.asked) + "-" << "If-Range: " + held.etag;
    call.stallTimeout = m_options.stallTimeout;
    call.deadline = m_deadline;
    return call;
}

HttpDownload::Try HttpDownload::tryOnce(const std::stop_token& stop)
{
    // After a response that made no sense for the rest, the whole is asked for; the bytes stay until it
    // comes.
    const Held held = expected(canGoOn() ? m_partial.size() : 0);
    ResponseWriter writer({m_folder, m_record, m_partial, m_options, m_report}, held);
    HttpCall request = call(held);
    request.receive = [&writer](const ResponseHead& head, std::span<const std::byte> bytes) {
        return writer.receive(head, bytes);
    };
    const HttpCallEnd end = perform(request, stop);
    if (end.kind == HttpCallEnd::Kind::complete)
        writer.settle(end.head);
    if (writer.plan() && writer.plan()->use == BodyUse::replace)
        m_distrustsBytes = false;
    return judge(end, writer);
}

HttpDownload::Try HttpDownload::judge(const HttpCallEnd& end, const ResponseWriter& writer)
{
    if (end.kind == HttpCallEnd::Kind::stopped)
        return {Try::Kind::failed, TransferError(TransferError::Kind::cancelled)};
    if (writer.problem())
        return {Try::Kind::failed, writer.problem()};
    if (end.kind == HttpCallEnd::Kind::failed && (!writer.plan() || writer.plan()->use != BodyUse::putAside))
        return {isWorthAnotherTry(*end.error) ? Try::Kind::broken : Try::Kind::failed, end.error};
    return judgeComplete(end, writer);
}

HttpDownload::Try HttpDownload::judgeComplete(const HttpCallEnd& end, const ResponseWriter& writer)
{
    const TransferError bad(TransferError::Kind::badAnswer);
    switch (writer.plan()->use) {
    case BodyUse::append:
    case BodyUse::replace:
    case BodyUse::rewrite:
        if (!writer.isWhole())
            return {Try::Kind::broken, TransferError(TransferError::Kind::connectionLost)};
        if (const auto cut = m_partial.cutTo(m_partial.position()); !cut)
            return {Try::Kind::failed, cut.error()};
        return finish(end.head.status, false);
    case BodyUse::nothing:
        return finish(httpOk, false);
    case BodyUse::holdBack:
    case BodyUse::putAside:
        // A signed address may have expired on the way; the stable one gives a fresh one.
        if (end.redirected && (end.head.status == forbidden || end.head.status == unauthorized) &&
            !std::exchange(m_askedAfterRefusal, true))
            return {Try::Kind::again, {}};
        return finish(end.head.status, true);
    case BodyUse::askFromStart:
        if (++m_restarts > mostRestarts)
            return {Try::Kind::failed, bad};
        m_distrustsBytes = true;
        return {Try::Kind::again, {}};
    case BodyUse::refuse:
        return {Try::Kind::failed, bad};
    }
    Q_UNREACHABLE();
}

HttpDownload::Try HttpDownload::finish(int httpStatus, bool aside)
{
    if (!aside) {
        if (const auto flushed = m_partial.flushToDisk(); !flushed)
            return {Try::Kind::failed, flushed.error()};
    }
    m_record.state = TransferRecord::State::finished;
    m_record.httpStatus = httpStatus;
    m_record.aside = aside;
    return {Try::Kind::done, {}};
}

DownloadEnd HttpDownload::ended(const Try& last)
{
    DownloadEnd end{m_record, m_partial.size(), last.error};
    if (last.error)
        end.record.state = TransferRecord::State::paused;
    if (m_partial.flushToDisk())
        end.record.safeBytes = m_partial.size();
    // Bytes that can't be gone on with are of no use.
    const bool keeps = m_partial.size() > 0 && isStrong(m_record.etag);
    if (!keeps && (last.error || m_record.aside))
        QFile::remove(m_folder.partialFile(m_record.key()));
    if (!keeps && last.error) {
        m_folder.forget(m_record.key());
        return end;
    }
    if (m_folder.save(end.record))
        return end;
    if (last.error)
        pauseWithoutRoom(end);
    else
        end.error = TransferError(TransferError::Kind::notWritten, m_folder.recordFile(m_record.key()));
    return end;
}

void HttpDownload::pauseWithoutRoom(DownloadEnd& end)
{
    // On a full disk the record would stay `running`, and the next helper go on unasked. The last bytes make
    // room.
    if (m_partial.cutTo(std::max<qint64>(m_partial.size() - roomForARecord, 0))) {
        end.received = m_partial.size();
        end.record.safeBytes = std::min(end.record.safeBytes, end.received);
        if (end.received > 0 && m_folder.save(end.record))
            return;
    }
    m_folder.forget(m_record.key());
    end.received = 0;
}

} // namespace tulvane::transfers
