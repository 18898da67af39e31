#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <QList>

namespace tulvane {

/// The devices behind the keyboard that programs see, by their numbers. Each has a keymap of its own;
/// programs see that of the device which was used last. Main thread.
struct KeyboardDevices {
    /// What the XTEST extension posts with; the whole keyboard where the server does not tell; negative where
    /// there is none at all.
    qint32 posting = -1;
    bool isPostingKnown = false; ///< whether that is a device by itself
    /// The others, on which fingers press keys; none where the server does not tell.
    QList<quint8> users;

    /// The posting device, as `heldKeys` takes it; none where it is the whole keyboard.
    [[nodiscard]] QList<quint8> postingDevices() const;
    /// Those there are now. A keyboard may come and go at any time.
    [[nodiscard]] static KeyboardDevices current(X11Connection& link);
};

/// A key that is down on one of the devices.
struct HeldKey {
    quint8 device = 0;
    xcb_keycode_t code = 0;

    [[nodiscard]] friend bool operator==(const HeldKey&, const HeldKey&) = default;
};

/// The keys that are down on these devices, whatever programs see of it.
[[nodiscard]] QList<HeldKey> heldKeys(X11Connection& link, const QList<quint8>& devices);

} // namespace tulvane
