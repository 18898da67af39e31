#pragma once

#include <platform/linux/wayland/clipboard/DataControlSource.h>
#include <platform/linux/wayland/clipboard/OfferReader.h>
#include <platform/linux/wayland/clipboard/PipeHolders.h>

#include <QFuture>
#include <QPromise>

#include <list>
#include <memory>
#include <optional>

namespace tulvane {

/// One selection: who owns it, what has changed, and who has read what we put there. Of the thread of its
/// connection.
class DataControlSelection final {
public:
    struct Ports {
        WaylandConnection& connection;
        zwlr_data_control_manager_v1* manager;
        Scheduler& scheduler; ///< of this thread
        /// Makes the source, or nothing, the selection's owner; false where there is no seat to do it on.
        std::function<bool(zwlr_data_control_source_v1* source)> take;
        /// Something that a caller may want to know has happened.
        std::function<void()> activity;
    };
    /// Whether it may be done only where this is still the change count.
    using OnlyAt = std::optional<qint64>;

    explicit DataControlSelection(Ports ports) : m_ports(std::move(ports)) {}
    DataControlSelection(const DataControlSelection&) = delete;
    DataControlSelection& operator=(const DataControlSelection&) = delete;
    ~DataControlSelection();

    /// The compositor reported an owner; null for none.
    void ownerChanged(std::shared_ptr<DataControlOffer> offer);

    [[nodiscard]] QFuture<PasteboardContents> contents();
    void readAhead();
    [[nodiscard]] qint64 changeCount();
    [[nodiscard]] qint64 ownChangeCount() const { return m_ownChangeCount; }
    bool put(const QList<PasteboardItem>& items, const PipeHolders::Target& target, OnlyAt count);
    bool clear(OnlyAt count);
    /// The paste chord goes out now: what the target reads from now on is the paste.
    void expectReader() { m_isReaderExpected = true; }
    [[nodiscard]] bool isRead() const { return m_isRead; }

private:
    struct PendingRead {
        QPromise<PasteboardContents> promise;
        std::unique_ptr<OfferReader> read;
        /// The promise is kept; the rest goes with the next turn of the event loop.
        bool isFinished = false;
    };

    [[nodiscard]] bool isOurs() const { return m_source && !m_source->isCancelled(); }
    [[nodiscard]] QFuture<PasteboardContents> startRead();
    void readFinished(PendingRead& pending, const PasteboardContents& contents);
    [[nodiscard]] bool counts(int pipe) const;
    void textRead(quint64 number);
    /// Readers that are being served go on; the source goes when the last has got all.
    void retire(std::unique_ptr<DataControlSource> source);
    void countOwnChange() { m_ownChangeCount = ++m_changeCount; }

    Ports m_ports;
    std::shared_ptr<DataControlOffer> m_offer; ///< another program's
    std::unique_ptr<DataControlSource> m_source;
    std::list<std::unique_ptr<DataControlSource>> m_retired;
    QList<PasteboardItem> m_ownItems;
    PipeHolders::Target m_target;
    quint64 m_number = 0; ///< counts our writes
    std::list<PendingRead> m_reads;
    std::optional<QFuture<PasteboardContents>> m_ahead;
    std::unique_ptr<Scheduler::Token> m_aheadEnd;
    qint64 m_changeCount = 0;
    qint64 m_ownChangeCount = 0;
    bool m_isClearing = false; ///< a clearing of ours is on its way
    bool m_isReaderExpected = false;
    bool m_isRead = false;
    QObject m_context; ///< what is called later is called while this lives
};

} // namespace tulvane
