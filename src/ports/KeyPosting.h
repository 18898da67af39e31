#pragma once

#include <QFuture>
#include <QtGlobal>

namespace tulvane {

/// Synthesized keystrokes. Main thread.
class KeyPosting {
public:
    // Key codes are physical positions, the same numbers on every desktop.
    static constexpr int keyV = 9;
    static constexpr int keySpace = 49;
    // Flag masks of an event.
    static constexpr quint32 noFlags = 0;
    static constexpr quint32 command = 0x100000;

    KeyPosting() = default;
    KeyPosting(const KeyPosting&) = delete;
    KeyPosting& operator=(const KeyPosting&) = delete;
    virtual ~KeyPosting() = default;

    /// Presses and releases a key with exactly these flags, whatever modifiers the user holds down meanwhile;
    /// held ones are held again afterwards. `keyV` with `command` is the paste command of the program in
    /// front, whichever keys that takes there. Where another program's keyboard grab would swallow the keys,
    /// waits for its end, at most `grabLimitMs`. False when the keystroke could not be posted. The future
    /// always finishes with a result.
    [[nodiscard]] virtual QFuture<bool> post(int keyCode, quint32 flags) = 0;

    static constexpr int grabLimitMs = 2000;
};

} // namespace tulvane
