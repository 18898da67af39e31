#pragma once

#include <platform/linux/session/Session.h>
#include <ports/Desktop.h>

namespace tulvane {

/// Puts a null port wherever the desktop has none yet, and names it with its reason and its remedy among what
/// the desktop lacks. `session` says why; a session that lacks nothing of what it should have says nothing.
void fillWithNullPorts(Desktop& desktop, const Session& session);

} // namespace tulvane
