#include <base/Log.h>
#include <platform/linux/formats/ClipboardFormat.h>
#include <platform/linux/wayland/clipboard/OfferReader.h>

#include <algorithm>

namespace tulvane {

OfferReader::OfferReader(WaylandConnection& connection, Scheduler& scheduler, Done done)
    : m_connection(connection),
      m_scheduler(scheduler),
      m_done(std::move(done)),
      m_late(m_scheduler.after(totalLimit, [this] { finish(false); }))
{
}

void OfferReader::begin(std::shared_ptr<DataControlOffer> offer)
{
    if (!m_done)
        return;
    m_offer = std::move(offer);
    m_left = m_offer ? m_offer->types() : QStringList();
    std::ranges::stable_sort(m_left, {}, worthOf);
    m_pipe.reset();
    m_item = {};
    m_bytes = 0;
    m_stalls = 0;
    m_lost = false;
    m_encodingsEnd.reset();
    later([this] { askNext(); });
}

void OfferReader::hurry()
{
    m_isWaitedFor = true;
    if (m_pipe && isDispensable(m_type))
        limitEncodings();
}

void OfferReader::later(std::function<void()> work)
{
    m_step = std::make_unique<QObject>();
    QMetaObject::invokeMethod(m_step.get(), std::move(work), Qt::QueuedConnection);
}

bool OfferReader::isDispensable(const QString& type) const
{
    const auto isPicture = [](const QString& format) {
        return worthOf(format) == FormatWorth::picture || worthOf(format) == FormatWorth::redundant;
    };
    return worthOf(type) == FormatWorth::redundant &&
           std::ranges::any_of(m_item.dataByType.keys(), isPicture);
}

void OfferReader::limitEncodings()
{
    if (!m_encodingsEnd)
        m_encodingsEnd = m_scheduler.after(encodingsLimit, [this] { finish(true); });
}

void OfferReader::askNext()
{
    m_pipe.reset();
    if (m_left.isEmpty())
        finish(true);
    else
        ask(m_left.takeFirst());
}

void OfferReader::ask(const QString& type)
{
    m_type = type;
    if (m_isWaitedFor && isDispensable(type))
        limitEncodings();
    FileDescriptor end = m_offer->receive(type);
    m_connection.flush();
    if (!end.isOpen() || m_connection.isBroken()) {
        finish(false);
        return;
    }
    m_pipe = std::make_unique<PipeReader>(
        std::move(end), PipeReader::Handlers{.progressed = [this](qsizetype bytes) { progressed(bytes); },
                                             .ended = [this](const QByteArray& bytes) { ended(bytes); }});
    waitForMore();
}

void OfferReader::waitForMore()
{
    const bool isPicture = worthOf(m_type) == FormatWorth::picture;
    m_stalled = m_scheduler.after(isPicture ? pictureLimit : formatLimit, [this] { stalled(); });
}

void OfferReader::progressed(qsizetype bytes)
{
    if (m_bytes + bytes > byteLimit)
        later([this] { finish(false); });
    else
        waitForMore();
}

void OfferReader::ended(const QByteArray& bytes)
{
    // An owner that does not deliver closes the pipe without a byte; a text that is empty does the same.
    if (!bytes.isEmpty()) {
        m_item.dataByType.insert(m_type, bytes);
        m_bytes += bytes.size();
        m_stalls = 0;
    }
    m_stalled.reset();
    // The pipe is still on this stack.
    later([this] { askNext(); });
}

void OfferReader::stalled()
{
    // A picture that there is in another encoding is not lost.
    if (!isDispensable(m_type)) {
        m_lost = true;
        qCWarning(lcInsertion).noquote() << "The clipboard's owner did not deliver" << m_type;
    }
    if (++m_stalls == stallLimit)
        finish(false);
    else
        askNext();
}

void OfferReader::finish(bool complete)
{
    m_pipe.reset();
    m_stalled.reset();
    m_late.reset();
    m_encodingsEnd.reset();
    m_step = std::make_unique<QObject>();
    PasteboardContents contents{{}, (complete || isDispensable(m_type)) && !m_lost};
    if (!m_item.dataByType.isEmpty())
        contents.items.append(m_item);
    if (const Done done = std::exchange(m_done, nullptr))
        done(contents);
}

} // namespace tulvane
