#pragma once

#include <base/Result.h>

#include <QByteArray>

namespace tulvane {

/// What an exclusive lock does while another one holds it.
enum class WhenLocked { wait, giveUp };

/// Opens the file of this encoded name for writing, creating it where needed (its user's alone, a link not
/// followed), and locks it. The name leads to the locked file when this returns; who removes or renames the
/// file does so before closing it. The result is the descriptor, closed by the caller, or the error's number:
/// EWOULDBLOCK for a lock that another one holds. Any thread.
[[nodiscard]] Result<int, int> openLocked(const QByteArray& name, WhenLocked whenLocked);

} // namespace tulvane
