#include <platform/linux/transfers/http/ResponseWriter.h>

#include <algorithm>
#include <utility>

namespace tulvane::transfers {

namespace {

using namespace std::chrono_literals;

constexpr qint64 mebibyte = 1024 * 1024;
// What is put aside is never shown; this much tells every check what it is.
constexpr qint64 mostAside = mebibyte;
constexpr auto reportEvery = 100ms;
// After a power cut at most so much of the download is fetched again.
constexpr auto keepEvery = 30s;

} // namespace

bool ResponseWriter::fail(const TransferError& error)
{
    m_problem = error;
    if (error.kind() == TransferError::Kind::noSpace && error.detail().isEmpty()) {
        const qint64 whole = m_place.record.size > 0 ? m_place.record.size : m_place.record.sizeHint;
        const qint64 missing = std::max<qint64>(whole - m_place.partial.position(), 1);
        m_problem = TransferError(TransferError::Kind::noSpace, QString::number(missing));
    }
    return false;
}

bool ResponseWriter::hasRoom()
{
    return leavesReserve(std::max<qint64>(m_place.record.size - m_place.partial.size(), 0));
}

bool ResponseWriter::leavesReserve(qint64 growth)
{
    const qint64 missing = std::max(growth, m_place.record.size - m_place.partial.size());
    const qint64 free = m_place.partial.freeSpace() - m_place.options.reserve;
    if (growth <= 0 || growth <= free)
        return true;
    return fail(TransferError(TransferError::Kind::noSpace, QString::number(missing - free)));
}

bool ResponseWriter::beginBody(const ResponseHead& head)
{
    TransferRecord& record = m_place.record;
    if (m_plan->use == BodyUse::rewrite) {
        m_place.partial.rewind();
        return hasRoom();
    }
    const bool replacing = m_plan->use == BodyUse::replace;
    if (const auto cut = m_place.partial.cutTo(replacing ? 0 : m_held.asked); !cut)
        return fail(cut.error());
    if (replacing)
        record.etag = isStrong(head.etag) ? head.etag : QByteArray();
    else if (record.etag.isEmpty() && isStrong(head.etag))
        record.etag = head.etag;
    record.size = m_plan->size;
    record.safeBytes = std::min(record.safeBytes, m_place.partial.size());
    record.boot = currentBoot();
    if (!m_place.folder.save(record))
        return fail(TransferError(TransferError::Kind::notWritten, m_place.folder.recordFile(record.key())));
    return hasRoom();
}

bool ResponseWriter::begin(const ResponseHead& head)
{
    m_plan = planFor(head, m_held);
    switch (m_plan->use) {
    case BodyUse::append:
    case BodyUse::replace:
    case BodyUse::rewrite:
        return beginBody(head);
    case BodyUse::putAside:
        return openAside();
    case BodyUse::holdBack:
        return true;
    case BodyUse::nothing:
    case BodyUse::askFromStart:
    case BodyUse::refuse:
        return false;
    }
    Q_UNREACHABLE();
}

bool ResponseWriter::openAside()
{
    m_aside.setFileName(m_place.folder.asideFile(m_place.record.key()));
    if (!m_aside.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return fail(TransferError(TransferError::Kind::notWritten, m_aside.errorString()));
    return true;
}

bool ResponseWriter::writeAside(std::span<const std::byte> bytes)
{
    const qint64 room = std::max<qint64>(mostAside - m_aside.size(), 0);
    const qint64 size = std::min(room, static_cast<qint64>(bytes.size()));
    // A page that does not fit on the disk is as good as an empty one: its status is what counts.
    m_aside.write(reinterpret_cast<const char*>(bytes.data()), size);
    m_aside.flush();
    return size == static_cast<qint64>(bytes.size());
}

bool ResponseWriter::receive(const ResponseHead& head, std::span<const std::byte> bytes)
{
    if (!m_plan && !begin(head))
        return false;
    if (m_plan->use == BodyUse::putAside)
        return writeAside(bytes);
    if (m_plan->use == BodyUse::holdBack)
        return holdBack(head, bytes);
    return writeBody(bytes);
}

bool ResponseWriter::holdBack(const ResponseHead& head, std::span<const std::byte> bytes)
{
    m_heldBack.append(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size()));
    if (m_heldBack.size() < std::min(m_held.least(), mostAside))
        return true;
    m_plan->use = BodyUse::replace;
    const QByteArray body = std::exchange(m_heldBack, {});
    return beginBody(head) && writeBody(std::as_bytes(std::span(body.constData(), body.size())));
}

bool ResponseWriter::writeBody(std::span<const std::byte> bytes)
{
    const qint64 size = m_place.record.size;
    const qint64 end = m_place.partial.position() + static_cast<qint64>(bytes.size());
    if (size < 0 && end > m_held.most())
        m_place.record.etag.clear(); // no part of the file that is wanted: none of it is kept
    if (end > (size < 0 ? m_held.most() : size))
        return fail(TransferError(TransferError::Kind::badAnswer));
    if (!leavesReserve(end - m_place.partial.size()))
        return false;
    if (const auto written = m_place.partial.write(bytes); !written)
        return fail(written.error());
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lastReport >= reportEvery) {
        m_lastReport = now;
        m_place.report(m_place.partial.size(), size);
    }
    if (now - m_lastKept >= keepEvery)
        keepRecord();
    return true;
}

void ResponseWriter::keepRecord()
{
    m_lastKept = std::chrono::steady_clock::now();
    if (!m_place.partial.flushToDisk())
        return;
    m_place.record.safeBytes = m_place.partial.size();
    // Failing to note it costs nothing now; the bytes themselves are there.
    static_cast<void>(m_place.folder.save(m_place.record));
}

void ResponseWriter::settle(const ResponseHead& head)
{
    if (!m_plan && !m_problem)
        static_cast<void>(begin(head));
    if (!m_plan || m_plan->use != BodyUse::holdBack)
        return;
    m_plan->use = BodyUse::putAside;
    if (openAside())
        static_cast<void>(writeAside(std::as_bytes(std::span(m_heldBack.constData(), m_heldBack.size()))));
}

bool ResponseWriter::isWhole() const
{
    return m_place.record.size < 0 || m_place.partial.position() == m_place.record.size;
}

} // namespace tulvane::transfers
