#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/clipboard/SelectionOwner.h>
#include <platform/linux/x11/clipboard/SelectionReader.h>
#include <ports/Pasteboard.h>

#include <QElapsedTimer>
#include <QObject>
#include <QPromise>

#include <xcb/xfixes.h>

#include <chrono>
#include <list>
#include <memory>
#include <optional>

namespace tulvane {

/// One selection of the X server as a pasteboard. It holds one item at most. What it puts on the pasteboard
/// is there as long as this object is, unless a clipboard manager keeps a copy.
///
/// It tells whether the target has read the text, by who asks for it: a request from the target's program
/// counts, over whichever connection and from whichever of its processes, one from any other program (a
/// clipboard manager) does not. A program in front that keeps copies of its own
/// asks as soon as the owner changes, and never again when it pastes.
class X11Pasteboard final : public Pasteboard {
public:
    enum class Readers {
        target, ///< who asks is known: the target's program counts, and no other
        /// The requests of most programs come from a compositor, on its own account too: one counts that
        /// comes after the paste keys.
        bridged,
        /// The same where the compositor's own clipboard manager asks once at each write: the first request
        /// is that one, whenever it comes.
        bridgedAndKept,
    };

    /// `selection` is "CLIPBOARD" or "PRIMARY". The first three outlive the pasteboard.
    X11Pasteboard(X11Connection& link, SelectionOwner& keeper, Scheduler& scheduler, const QString& selection,
                  Readers readers = Readers::target);
    X11Pasteboard(const X11Pasteboard&) = delete;
    X11Pasteboard& operator=(const X11Pasteboard&) = delete;
    ~X11Pasteboard() override;

    [[nodiscard]] QFuture<PasteboardContents> contents() override;
    [[nodiscard]] qint64 changeCount() override;
    bool replaceFor(const QList<PasteboardItem>& items, const PasteTarget& target) override;
    void clear() override;
    [[nodiscard]] qint64 ownChangeCount() const override { return m_ownChangeCount; }
    bool replaceUnlessChanged(const QList<PasteboardItem>& items, qint64 count) override;
    [[nodiscard]] Reading reading() const override { return m_reading; }
    void setActivityHandler(std::function<void()> handler) override { m_activity = std::move(handler); }

    /// What has been read ahead and is not asked for is forgotten after this.
    static constexpr std::chrono::minutes aheadLimit{2};
    /// Begins to read; the next `contents()` gives what comes, unless the content has changed by then.
    void readAhead();
    /// The targets under which our own content is on offer; none where another program has the selection.
    [[nodiscard]] QList<xcb_atom_t> ownTargets();

    /// The keys that make the target paste go out now; the bridged ones need to know.
    void expectReader() { m_expectsReader = true; }
    /// Whether programs that read through a compositor can have our last write by now: where its clipboard
    /// manager has asked for it, or, where there is none, after `bridgeTime`. True where none stands between.
    [[nodiscard]] bool isBridged() const;
    static constexpr std::chrono::milliseconds bridgeTime{60};

    void handle(const xcb_generic_event_t& event);

private:
    struct PendingRead {
        QPromise<PasteboardContents> promise;
        xcb_window_t window = noWindow;
        std::unique_ptr<SelectionReader> read;
        /// The promise is kept; the rest goes with the next turn of the event loop.
        bool isFinished = false;
    };

    /// Whether it may be done only where this is still the change count.
    using OnlyAt = std::optional<qint64>;
    bool put(const QList<PasteboardItem>& items, const PasteTarget& target, OnlyAt count);
    bool empty(OnlyAt count);
    void countOwnChange() { m_ownChangeCount = ++m_changeCount; }

    [[nodiscard]] QFuture<PasteboardContents> startRead();
    void ownerChanged(const xcb_xfixes_selection_notify_event_t& notice);
    void textRead(xcb_window_t reader, const ClientProcess& process, quint64 offer);
    [[nodiscard]] bool isOfTheTarget(xcb_window_t reader, const ClientProcess& process);
    void readFinished(PendingRead& pending, const SelectionReader::Outcome& outcome);
    [[nodiscard]] bool isOurs() const;
    void setOwner(xcb_window_t owner, xcb_timestamp_t time);
    void tellActivity();

    X11Connection& m_link;
    SelectionOwner& m_keeper;
    Scheduler& m_scheduler;
    xcb_atom_t m_selection;
    xcb_window_t m_window; ///< receives the server's events about the owner
    xcb_window_t m_owner;  ///< owns the selection while it is ours
    std::uint8_t m_fixesEvent = 0;
    quint64 m_offer = 0; ///< counts our writes
    QList<PasteboardItem> m_ownItems;
    TargetForms m_forms;
    std::list<PendingRead> m_reads;
    std::optional<QFuture<PasteboardContents>> m_ahead;
    std::unique_ptr<Scheduler::Token> m_aheadEnd;
    qint64 m_changeCount = 0;
    qint64 m_ownChangeCount = 0;
    /// The time of a clearing of ours whose notice is on its way.
    std::optional<xcb_timestamp_t> m_clearing;
    Reading m_reading = Reading::unread;
    xcb_window_t m_target = noWindow; ///< whom our last write was for
    ClientProcess m_program;          ///< the target's
    Readers m_readers;
    int m_requests = 0; ///< of our last write's text
    QElapsedTimer m_sinceWrite;
    bool m_expectsReader = false;
    std::function<void()> m_activity;
    std::unique_ptr<X11Connection::Token> m_listening;
    QObject m_context; ///< what is called later is called while this lives
};

} // namespace tulvane
