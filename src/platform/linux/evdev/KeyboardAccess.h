#pragma once

#include <ports/Obstacle.h>

#include <QString>

namespace tulvane {

/// Whether the system lets this program read the keyboards' own devices.
enum class KeyboardAccess {
    granted, ///< one of them at least
    denied,
    none, ///< there is no keyboard here
};

/// Looks at every device in the folder, "/dev/input"; reads no key. Cheap. Any thread.
[[nodiscard]] KeyboardAccess keyboardAccess(const QString& folder = QStringLiteral("/dev/input"));

/// Why no keyboard can be read, and how the user can change that; empty where one can.
[[nodiscard]] Obstacle obstacleOf(KeyboardAccess access);

} // namespace tulvane
