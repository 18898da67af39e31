#pragma once

#include <QtGlobal>

namespace tulvane {

/// A keyboard that the program has at a compositor. Main thread.
class KeyDevice {
public:
    KeyDevice() = default;
    KeyDevice(const KeyDevice&) = delete;
    KeyDevice& operator=(const KeyDevice&) = delete;
    virtual ~KeyDevice() = default;

    /// Whether keys can still be posted, as far as is known.
    [[nodiscard]] virtual bool isThere() const = 0;
    /// Makes sure that what the user holds down does not join the next keys, where the compositor would join
    /// it.
    virtual void letGo() = 0;
    /// `evdev` is the Linux kernel's number of a key.
    virtual void press(quint32 evdev) = 0;
    virtual void release(quint32 evdev) = 0;
    /// The compositor has all of it when this returns. False where it has gone.
    [[nodiscard]] virtual bool finish() = 0;
};

} // namespace tulvane
