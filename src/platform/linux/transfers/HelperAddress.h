#pragma once

#include <base/Result.h>

#include <QString>

namespace tulvane::transfers {

/// Where the helper for a transfer folder listens: in the user's runtime folder ($XDG_RUNTIME_DIR/tulvane),
/// or, without one, in a folder of the temporary directory. Makes that folder, which only the user can enter;
/// fails, with a reason to show, when somebody else could.
[[nodiscard]] Result<QString, QString> helperSocketFor(const QString& transferFolder);

/// What a program tells the helper, and the helper a program, first of all. Raised when messages change.
inline constexpr int protocolVersion = 2;

} // namespace tulvane::transfers
