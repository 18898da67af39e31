#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/keyboard/KeyboardLayout.h>
#include <platform/linux/x11/keyboard/KeyboardState.h>
#include <ports/KeyPosting.h>

#include <QPromise>

#include <functional>
#include <list>
#include <memory>
#include <optional>

namespace tulvane {

/// Synthesized keystrokes by the XTEST extension. Main thread.
class X11KeyPosting final : public KeyPosting {
public:
    /// Whether keys that are posted now reach the target.
    using IsInFront = std::function<bool(const PasteTarget&)>;

    /// `link` and `scheduler` outlive it.
    X11KeyPosting(X11Connection& link, Scheduler& scheduler, IsInFront isInFront);
    X11KeyPosting(const X11KeyPosting&) = delete;
    X11KeyPosting& operator=(const X11KeyPosting&) = delete;
    ~X11KeyPosting() override;

    [[nodiscard]] QFuture<bool> paste(const PasteTarget& target) override;
    [[nodiscard]] QFuture<bool> typeSpaces(int count) override;

private:
    /// A key and the modifiers that belong to it, by what they mean.
    struct Chord {
        xkb_keysym_t key;
        QList<xkb_keysym_t> modifiers;
    };
    /// The same, found on the keyboard.
    struct Stroke {
        KeyPlace place;
        QList<xkb_keysym_t> modifiers;
    };
    using Post = std::function<bool()>;
    /// What waits for the end of a grab.
    struct Waiting {
        Post post;
        int roundsLeft;
        QPromise<bool> promise;
        std::unique_ptr<Scheduler::Token> next;
    };

    /// Posts now, or once the keys reach the program in front again.
    [[nodiscard]] QFuture<bool> whenFree(Post post);
    /// For a target only where that is in front still.
    [[nodiscard]] bool postNow(const Chord& chord, const std::optional<PasteTarget>& target);
    [[nodiscard]] static Chord chordOf(const PasteChord& chord);
    [[nodiscard]] bool keysAreTaken();
    void tryAgain(Waiting& waiting);
    void send(const Stroke& stroke, const KeyboardLayout& layout, const KeyboardState& state);
    void sendAmong(const Stroke& stroke, const KeyboardLayout& layout, const KeyboardState& state);
    void key(xcb_keycode_t code, bool down);
    void tap(xcb_keycode_t code);

    X11Connection& m_link;
    Scheduler& m_scheduler;
    IsInFront m_isInFront;
    bool m_canPost = false;
    std::list<Waiting> m_waiting;
};

} // namespace tulvane
