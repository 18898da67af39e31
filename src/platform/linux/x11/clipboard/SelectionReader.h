#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/clipboard/ClipboardFormats.h>
#include <ports/PasteboardItem.h>

#include <chrono>
#include <functional>
#include <memory>

namespace tulvane {

/// Reads everything that another program offers under a selection, one target after the other in the order of
/// their worth. Main thread;
/// never waits. Dropping it ends it.
class SelectionReader final {
public:
    /// An owner that has not even named its formats by then is given up on.
    static constexpr std::chrono::milliseconds listLimit{300};
    /// A format of which nothing comes for this long is left out: the owner may have to make it first.
    static constexpr std::chrono::milliseconds formatLimit{3000};
    /// The same for the picture itself: a busy machine takes that long over one of 3840x2160.
    static constexpr std::chrono::milliseconds pictureLimit{8000};
    /// After so many formats of which nothing came, one after the other, the owner is given up on.
    static constexpr int stallLimit = 2;
    /// And one that keeps us waiting for longer than this in all, however busily.
    static constexpr std::chrono::milliseconds totalLimit{12000};
    /// How much longer a read that is waited for goes on for the sake of further encodings of a picture that
    /// it has already.
    static constexpr std::chrono::milliseconds encodingsLimit{300};
    static constexpr qsizetype byteLimit = 256 * 1024 * 1024;

    struct Outcome {
        PasteboardContents contents;
        TargetForms forms;
    };
    using Done = std::function<void(const Outcome&)>;

    /// `window` is a hidden window of ours on which nothing else is read meanwhile. `done` is called once,
    /// later; the read may be dropped from within it.
    SelectionReader(X11Connection& link, Scheduler& scheduler, xcb_window_t window, xcb_atom_t selection,
                    Done done);
    SelectionReader(const SelectionReader&) = delete;
    SelectionReader& operator=(const SelectionReader&) = delete;
    ~SelectionReader() = default;

    void begin();
    /// Another program has taken the selection over: what has been read is of no use.
    void beginAgain();
    /// From now on the caller waits: what is of no further use is not waited for.
    void hurry();

private:
    enum class Waiting { nothing, notice, pieces };

    void handle(const xcb_generic_event_t& event);
    void ask(xcb_atom_t target);
    void askNext();
    void noticed(const xcb_selection_notify_event_t& notice);
    void takeProperty();
    void takeWhole(const XcbReply<xcb_get_property_reply_t>& reply);
    void takePiece(const XcbReply<xcb_get_property_reply_t>& reply);
    void take(const QByteArray& bytes, const TargetForm& form);
    void takeTargets(const QByteArray& bytes);
    void keep(const QByteArray& bytes, const TargetForm& form);
    void progressed();
    /// Whether all that is left is the same picture in other encodings.
    [[nodiscard]] bool isDispensable(xcb_atom_t target) const;
    void limitEncodings();
    void stalled();
    void finish(bool complete);
    [[nodiscard]] XcbReply<xcb_get_property_reply_t> fetchProperty();

    X11Connection& m_link;
    Scheduler& m_scheduler;
    xcb_window_t m_window;
    xcb_atom_t m_selection;
    Done m_done;
    Waiting m_waiting = Waiting::nothing;
    xcb_atom_t m_target = noAtom;
    xcb_atom_t m_property = noAtom;
    xcb_timestamp_t m_time = XCB_CURRENT_TIME;
    int m_requests = 0;
    QList<xcb_atom_t> m_left;
    QByteArray m_pieces;
    TargetForm m_piecesForm;
    qsizetype m_bytes = 0;
    int m_stalls = 0;    ///< in a row
    bool m_lost = false; ///< something that was offered has not come
    PasteboardItem m_item;
    TargetForms m_forms;
    std::unique_ptr<Scheduler::Token> m_stalled;
    std::unique_ptr<Scheduler::Token> m_late;
    bool m_isWaitedFor = false;
    std::unique_ptr<Scheduler::Token> m_encodingsEnd;
    std::unique_ptr<X11Connection::Token> m_listening;
};

} // namespace tulvane
