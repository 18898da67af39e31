#pragma once

namespace tulvane {

/// Stops the process when it is called on any other thread than the application's main thread: what follows
/// touches state that only that thread may touch. `what` names the caller.
void requireMainThread(const char* what);

} // namespace tulvane
