#pragma once

namespace tulvane {

/// The whole of the program with its windows, from the process's first call to its last: does not return.
/// Main thread.
[[noreturn]] __attribute__((visibility("default"))) void runDesktopProgram(int argc, char** argv);

} // namespace tulvane
