#pragma once

#include <base/Scheduler.h>
#include <platform/linux/x11/keyboard/KeyStroke.h>
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
    [[nodiscard]] bool postNow(const KeyChord& chord, const std::optional<PasteTarget>& target);
    [[nodiscard]] static KeyChord chordOf(const PasteChord& chord);
    /// As soon as fingers have let go of what is held in their stead.
    void letGoLater();
    [[nodiscard]] bool keysAreTaken();
    void tryAgain(Waiting& waiting);

    X11Connection& m_link;
    Scheduler& m_scheduler;
    IsInFront m_isInFront;
    KeyStroke m_stroke;
    std::unique_ptr<Scheduler::Token> m_letGo;
    bool m_canPost = false;
    std::list<Waiting> m_waiting;
};

} // namespace tulvane
