#pragma once

#include <QtGlobal>

#include <array>

namespace tulvane {

/// The kernel's numbers of the modifier keys, both of each: Ctrl, Shift, Alt, Super.
inline constexpr std::array<quint32, 8> modifierKeys{29, 97, 42, 54, 56, 100, 125, 126};

} // namespace tulvane
