#include <platform/linux/wayland/clipboard/DataControlSelection.h>

#include <chrono>

namespace tulvane {

namespace {

/// What has been read ahead and is not asked for is forgotten after this.
constexpr std::chrono::minutes aheadLimit{2};

} // namespace

DataControlSelection::~DataControlSelection()
{
    for (PendingRead& pending : m_reads) {
        if (pending.isFinished)
            continue;
        pending.promise.addResult(PasteboardContents{{}, false});
        pending.promise.finish();
    }
}

void DataControlSelection::ownerChanged(std::shared_ptr<DataControlOffer> offer)
{
    // Our own write was counted when it was made; the compositor cancels it before it reports another.
    const bool isOwn = offer ? isOurs() : std::exchange(m_isClearing, false);
    if (isOwn)
        return;
    m_offer = std::move(offer);
    if (!m_offer)
        retire(std::move(m_source));
    ++m_changeCount;
    // A read that is still going on begins anew.
    if (m_ahead && m_ahead->isFinished())
        m_ahead.reset();
    for (PendingRead& pending : m_reads) {
        if (!pending.isFinished)
            pending.read->begin(m_offer);
    }
    m_ports.activity();
}

QFuture<PasteboardContents> DataControlSelection::contents()
{
    // A change that has happened is not to begin the read anew.
    m_ports.connection.catchUp();
    if (isOurs())
        return QtFuture::makeReadyFuture(PasteboardContents{m_ownItems, true});
    const auto ahead = std::exchange(m_ahead, std::nullopt);
    auto contents = ahead ? *ahead : startRead();
    for (PendingRead& pending : m_reads)
        pending.read->hurry();
    return contents;
}

void DataControlSelection::readAhead()
{
    m_ports.connection.catchUp();
    if (m_ahead || isOurs())
        return;
    m_ahead = startRead();
    m_aheadEnd = m_ports.scheduler.after(aheadLimit, [this] { m_ahead.reset(); });
}

QFuture<PasteboardContents> DataControlSelection::startRead()
{
    if (!m_offer || m_ports.connection.isBroken())
        return QtFuture::makeReadyFuture(PasteboardContents{{}, !m_ports.connection.isBroken()});
    PendingRead& pending = m_reads.emplace_back();
    pending.promise.start();
    pending.read = std::make_unique<OfferReader>(
        m_ports.connection, m_ports.scheduler,
        [this, &pending](const PasteboardContents& contents) { readFinished(pending, contents); });
    pending.read->begin(m_offer);
    return pending.promise.future();
}

void DataControlSelection::readFinished(PendingRead& pending, const PasteboardContents& contents)
{
    pending.isFinished = true;
    // The read is still running on this stack; it goes when the stack has unwound.
    QMetaObject::invokeMethod(
        &m_context,
        [this, gone = &pending] { m_reads.remove_if([&](const PendingRead& one) { return &one == gone; }); },
        Qt::QueuedConnection);
    pending.promise.addResult(contents);
    pending.promise.finish();
}

qint64 DataControlSelection::changeCount()
{
    m_ports.connection.catchUp();
    return m_changeCount;
}

bool DataControlSelection::put(const QList<PasteboardItem>& items, const PipeHolders::Target& target,
                               OnlyAt count)
{
    m_ports.connection.catchUp();
    if (m_ports.connection.isBroken() || (count && m_changeCount != *count))
        return false;
    retire(std::move(m_source));
    m_ahead.reset();
    m_offer.reset();
    m_ownItems = items;
    m_target = target;
    m_isReaderExpected = false;
    m_isRead = false;
    m_source = std::make_unique<DataControlSource>(
        m_ports.manager, items,
        DataControlSource::Handlers{
            // What is read of it once another has taken its place says nothing of that one.
            .counts = [this, number = ++m_number](int pipe) { return number == m_number && counts(pipe); },
            .textRead = [this, number = m_number] { textRead(number); },
            .cancelled =
                [this] {
                    if (!isOurs())
                        m_ownItems.clear();
                }});
    countOwnChange();
    if (!m_ports.take(m_source->object()))
        retire(std::move(m_source));
    m_ports.connection.catchUp();
    // It is retired where the seat has gone meanwhile, too.
    return m_source && !m_ports.connection.isBroken();
}

bool DataControlSelection::clear(OnlyAt count)
{
    m_ports.connection.catchUp();
    if (m_ports.connection.isBroken() || (count && m_changeCount != *count))
        return false;
    retire(std::move(m_source));
    m_ahead.reset();
    m_offer.reset();
    m_ownItems.clear();
    countOwnChange();
    // The notice of it comes now or, where there was nothing to clear, never.
    m_isClearing = true;
    const bool isTaken = m_ports.take(nullptr);
    m_ports.connection.catchUp();
    m_isClearing = false;
    return isTaken;
}

void DataControlSelection::retire(std::unique_ptr<DataControlSource> source)
{
    m_retired.remove_if([](const auto& one) { return !one->isServing(); });
    if (source)
        m_retired.push_back(std::move(source));
}

bool DataControlSelection::counts(int pipe) const
{
    if (!m_isReaderExpected)
        return false;
    return PipeHolders::readerOf(pipe, m_target) != PipeHolders::Reader::other;
}

void DataControlSelection::textRead(quint64 number)
{
    if (number != m_number)
        return;
    m_isRead = true;
    m_ports.activity();
}

} // namespace tulvane
