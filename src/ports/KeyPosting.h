#pragma once

#include <ports/PasteTarget.h>

#include <QFuture>

namespace tulvane {

/// Synthesized keystrokes. Main thread.
///
/// Every stroke reaches the program in front with exactly its own modifiers, whatever the user holds down
/// meanwhile; held keys are held again afterwards. Where another program's keyboard grab would swallow the
/// keys, a call waits for its end, at most `grabLimitMs`. The futures always finish with a result.
class KeyPosting {
public:
    KeyPosting() = default;
    KeyPosting(const KeyPosting&) = delete;
    KeyPosting& operator=(const KeyPosting&) = delete;
    virtual ~KeyPosting() = default;

    /// A paste may come soon: makes ready what takes time. Presses nothing that a program would act on, and
    /// changes nothing about what the calls below do, but how long they take.
    virtual void prepare() {}

    /// Presses and releases the target's chord. Posts nothing, and answers false, where the target's window
    /// is no longer in front when the keys would go out: they are not for another. False too when they could
    /// not be posted.
    [[nodiscard]] virtual QFuture<bool> paste(const PasteTarget& target) = 0;

    /// Presses and releases the Space key so many times, with no pause in between. False when one of them
    /// could not be posted; those after it are not tried.
    [[nodiscard]] virtual QFuture<bool> typeSpaces(int count) = 0;

    static constexpr int grabLimitMs = 2000;
};

} // namespace tulvane
