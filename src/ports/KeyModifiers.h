#pragma once

#include <QtGlobal>

#include <array>

namespace tulvane {

/// The modifiers of a key combination, in the bits of the Carbon event model. Stored, so they never change.
namespace carbon {
inline constexpr quint32 command = 0x100;
inline constexpr quint32 shift = 0x200;
inline constexpr quint32 option = 0x800;
inline constexpr quint32 control = 0x1000;
inline constexpr quint32 all = command | shift | option | control;
} // namespace carbon

/// The modifier flags of a window-system event: the device-independent bits, left and right alike.
namespace eventFlags {
inline constexpr quint64 capsLock = 0x10000;
inline constexpr quint64 shift = 0x20000;
inline constexpr quint64 control = 0x40000;
inline constexpr quint64 option = 0x80000;
inline constexpr quint64 command = 0x100000;
inline constexpr quint64 fn = 0x800000;
} // namespace eventFlags

/// The Carbon mask of an event's flags; flags that no combination has (Caps Lock, fn) fall away.
[[nodiscard]] constexpr quint32 carbonModifiers(quint64 flags)
{
    struct Pair {
        quint64 flag;
        quint32 modifier;
    };
    constexpr std::array pairs{
        Pair{eventFlags::command, carbon::command}, Pair{eventFlags::shift, carbon::shift},
        Pair{eventFlags::option, carbon::option}, Pair{eventFlags::control, carbon::control}};
    quint32 modifiers = 0;
    for (const Pair& pair : pairs) {
        if ((flags & pair.flag) != 0)
            modifiers |= pair.modifier;
    }
    return modifiers;
}

} // namespace tulvane
