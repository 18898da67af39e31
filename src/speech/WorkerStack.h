#pragma once

#include <QtGlobal>

namespace tulvane {

/// Bytes of stack for a thread that runs the speech library, which splits prompts by a recursive matcher,
/// whatever the limit that the user's shell sets.
inline constexpr uint workerStack = 16U * 1024 * 1024;

} // namespace tulvane
