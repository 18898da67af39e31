#pragma once

#include <platform/linux/x11/connection/X11Connection.h>

#include <QString>

namespace tulvane {

/// The name that the window manager gives itself ("Openbox"); empty where there is none. Waits for the
/// server.
[[nodiscard]] QString windowManagerName(X11Connection& connection);

} // namespace tulvane
