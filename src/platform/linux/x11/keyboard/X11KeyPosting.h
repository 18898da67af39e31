#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>

#include <QPromise>

#include <ports/KeyPosting.h>
#include <ports/PasteChord.h>

#include <list>
#include <memory>
#include <optional>

namespace tulvane {

/// Synthesized keystrokes by the XTEST extension. Knows the paste command and Space; other keys cannot be
/// posted.
class X11KeyPosting final : public KeyPosting {
public:
    /// `link` and `scheduler` outlive it.
    X11KeyPosting(X11Connection& link, Scheduler& scheduler, TerminalTable terminals);
    X11KeyPosting(const X11KeyPosting&) = delete;
    X11KeyPosting& operator=(const X11KeyPosting&) = delete;
    ~X11KeyPosting() override;

    [[nodiscard]] QFuture<bool> post(int keyCode, quint32 flags) override;

private:
    /// A key and the modifiers that belong to it.
    struct Stroke {
        KeyPlace place;
        QList<xkb_keysym_t> modifiers;
    };
    /// A post that waits for the end of a grab.
    struct Waiting {
        int keyCode;
        quint32 flags;
        int roundsLeft;
        QPromise<bool> promise;
        std::unique_ptr<Scheduler::Token> next;
    };

    [[nodiscard]] bool postNow(int keyCode, quint32 flags);
    [[nodiscard]] std::optional<Stroke> strokeFor(int keyCode, quint32 flags, const KeyboardLayout& layout,
                                                  const KeyboardState& state);
    [[nodiscard]] bool keysAreTaken();
    void tryAgain(Waiting& waiting);
    void send(const Stroke& stroke, const KeyboardLayout& layout, const KeyboardState& state);
    void sendAmong(const Stroke& stroke, const KeyboardLayout& layout, const KeyboardState& state);
    void key(xcb_keycode_t code, bool down);
    void tap(xcb_keycode_t code);

    X11Connection& m_link;
    Scheduler& m_scheduler;
    TerminalTable m_terminals;
    bool m_canPost = false;
    std::list<Waiting> m_waiting;
};

} // namespace tulvane
