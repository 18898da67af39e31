#pragma once

#include <QtGlobal>

namespace tulvane::test {

/// The small count in `make test`, the full one in `make soak` (TULVANE_SOAK=1).
[[nodiscard]] inline int soakCount(int small, int full)
{
    return qEnvironmentVariableIntValue("TULVANE_SOAK") != 0 ? full : small;
}

} // namespace tulvane::test
