#pragma once

#include <platform/linux/x11/clipboard/ClientProcess.h>
#include <platform/linux/x11/clipboard/ClipboardFormats.h>
#include <platform/linux/x11/clipboard/IncrementalTransfer.h>

#include <functional>
#include <list>

namespace tulvane {

/// Answers the programs that read a selection of ours. Lives in its link's thread.
class SelectionResponder final {
public:
    /// Called when a program has taken all of a text, which it tells by deleting the property that it came
    /// in: the window that asked for it, its process, and which of the offers the text was of. A program that
    /// was answered too late for its patience never takes it.
    using TextRead = std::function<void(xcb_window_t reader, const ClientProcess& process, quint64 offer)>;

    /// `owner` is the window in whose name the selection is held.
    SelectionResponder(X11Connection& link, xcb_window_t owner, xcb_atom_t selection, TextRead textRead);
    SelectionResponder(const SelectionResponder&) = delete;
    SelectionResponder& operator=(const SelectionResponder&) = delete;
    ~SelectionResponder() = default;

    /// From now on these are on offer, since `time`, under a number of the caller's.
    void set(const QList<TargetOffer>& offers, xcb_timestamp_t time, quint64 number);
    /// Nothing is on offer any more; transfers that have begun go on to their end.
    void drop() { m_offers.clear(); }

private:
    void handle(const xcb_generic_event_t& event);
    void answer(const xcb_selection_request_event_t& request);
    void propertyGone(xcb_window_t window, xcb_atom_t property);
    void windowGone(xcb_window_t window);
    /// Writes the answer into the property. False when there is none for this target.
    [[nodiscard]] bool convert(xcb_window_t reader, xcb_atom_t target, xcb_atom_t property);
    [[nodiscard]] bool convertSeveral(xcb_window_t reader, xcb_atom_t property);
    void writeAtoms(xcb_window_t reader, xcb_atom_t property, const QList<xcb_atom_t>& atoms);
    void begin(xcb_window_t reader, xcb_atom_t property, const TargetOffer& offer);
    /// Receives the reader's changes of its properties, until nothing of it is awaited any more.
    void watch(xcb_window_t reader);
    void unwatch(xcb_window_t reader);
    [[nodiscard]] bool textGone(xcb_window_t window, xcb_atom_t property);

    X11Connection& m_link;
    xcb_window_t m_owner;
    xcb_atom_t m_selection;
    TextRead m_textRead;
    QList<TargetOffer> m_offers;
    xcb_timestamp_t m_time = XCB_CURRENT_TIME;
    quint64 m_number = 0;
    struct Running {
        IncrementalTransfer transfer;
        bool isText = false;
        quint64 number = 0;
        ClientProcess process;
    };
    std::list<Running> m_running;
    /// A text that lies in a property and has yet to be taken from there.
    struct Given {
        xcb_window_t reader;
        xcb_atom_t property;
        quint64 number;
        ClientProcess process; ///< asked for with the text: the reader may end once it has it
    };
    QList<Given> m_given;
    std::unique_ptr<X11Connection::Token> m_listening;
};

} // namespace tulvane
