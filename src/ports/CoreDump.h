#pragma once

namespace tulvane {

/// Keeps recordings and texts out of crash files: the system writes no core file for this process and for
/// those that it starts, and one that is piped to another program holds none of its memory. To be called
/// first.
void leaveNoCoreDump();

} // namespace tulvane
