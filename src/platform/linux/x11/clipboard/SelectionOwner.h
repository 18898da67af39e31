#pragma once

#include <platform/linux/x11/clipboard/ClipboardFormats.h>
#include <platform/linux/x11/clipboard/SelectionResponder.h>

#include <QByteArray>
#include <QString>
#include <QThread>

#include <xcb/xcb.h>

#include <functional>
#include <memory>

namespace tulvane {

/// Holds selections in a thread and over a connection of its own, so that a program that reads them is
/// answered whatever the main thread does. It must be: a text field of our own windows reads the clipboard on
/// the main thread, waits there for the answer, and would wait for itself.
///
/// Called from the main thread; each call waits for the keeper's thread, which waits for the X server and for
/// nobody else.
class SelectionOwner final {
public:
    /// Called on the keeper's thread.
    using TextRead = SelectionResponder::TextRead;

    /// `display` as in DISPLAY. Null when there is no such server.
    [[nodiscard]] static std::unique_ptr<SelectionOwner> start(const QByteArray& display);
    SelectionOwner(const SelectionOwner&) = delete;
    SelectionOwner& operator=(const SelectionOwner&) = delete;
    ~SelectionOwner();

    /// Makes ready for holding the selection. Returns the window in whose name it will be held.
    [[nodiscard]] xcb_window_t keep(xcb_atom_t selection, TextRead textRead);
    /// Puts these on offer since `time`, under a number that `TextRead` receives, and takes the selection.
    /// The server has it when this returns.
    void take(xcb_atom_t selection, const QList<TargetOffer>& offers, xcb_timestamp_t time, quint64 number);
    /// Nothing is on offer any more; transfers that have begun go on to their end.
    void drop(xcb_atom_t selection);
    /// Gives the selection up; nothing is called for it any more.
    void forget(xcb_atom_t selection);

private:
    struct Parts;
    SelectionOwner();

    /// Runs in the keeper's thread; returns when it has run.
    void inThread(const std::function<void()>& work);

    QThread m_thread;
    QObject m_there;                ///< lives in the thread
    std::unique_ptr<Parts> m_parts; ///< made and destroyed in the thread
};

} // namespace tulvane
