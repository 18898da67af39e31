#pragma once

#include <app/cli/Console.h>
#include <ports/RemoteControl.h>

#include <QStringList>

#include <array>

namespace tulvane::cli {

/// The words that are one request to the running program each.
inline constexpr std::array remoteWords{"start", "stop", "toggle", "cancel", "quit", "status"};

/// `tulvane start|stop|toggle|cancel|quit|status [--json]`: one request to the running program. `name` is the
/// word itself. Ends with `notRunning` where there is no such program. Main thread.
[[nodiscard]] int runRemote(const QString& name, const QStringList& arguments, RemoteControl& remote,
                            Console& console);

} // namespace tulvane::cli
