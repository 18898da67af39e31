#pragma once

#include <base/Result.h>

#include <QString>

namespace tulvane::transfers {

/// Where the helper for a transfer folder listens: in the user's runtime folder ($XDG_RUNTIME_DIR/tulvane),
/// or, without one, in a folder of the temporary directory. Makes that folder, which only the user can enter;
/// fails, with a reason to show, when other users could.
[[nodiscard]] Result<QString, QString> helperSocketFor(const QString& transferFolder);

/// What the program and the helper send each other first of all. Raised when messages change.
inline constexpr int protocolVersion = 2;

} // namespace tulvane::transfers
