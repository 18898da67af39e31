#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <chrono>

namespace tulvane {

/// Leaves the clipboard that we own with the desktop's clipboard manager, so that it outlives us. The thread
/// of the link; the clipboard must be answered from another one meanwhile.
class ClipboardHandover final {
public:
    /// How long a manager may take to save everything.
    static constexpr std::chrono::milliseconds limit{500};

    /// `link` outlives it.
    explicit ClipboardHandover(X11Connection& link);
    ClipboardHandover(const ClipboardHandover&) = delete;
    ClipboardHandover& operator=(const ClipboardHandover&) = delete;
    ~ClipboardHandover();

    /// Waits until the manager has saved these targets of the clipboard, at most `limit`. False where there
    /// is no manager, or it has not.
    bool run(const QList<xcb_atom_t>& targets);

    void handle(const xcb_generic_event_t& event);

private:
    [[nodiscard]] bool hasManager() const;

    X11Connection& m_link;
    std::unique_ptr<X11Connection::Token> m_listening;
    xcb_window_t m_window;
    xcb_atom_t m_manager;
    bool m_answered = false;
    bool m_saved = false;
};

} // namespace tulvane
