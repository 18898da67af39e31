#pragma once

#include <app/cli/Console.h>
#include <ports/RemoteControl.h>

#include <QStringList>

#include <functional>
#include <optional>

namespace tulvane::cli {

/// Has the running program run a command in this process's place: prints what it printed, and gives its
/// status. None where no program runs, or none that understands. Main thread.
[[nodiscard]] std::optional<int> runThere(const QStringList& arguments, RemoteRequest request,
                                          RemoteControl& remote, Console& console);

/// The other end: runs `command` with the text of the request, and answers with what it printed.
[[nodiscard]] QJsonObject
answerOf(const QString& text,
         const std::function<int(const QStringList& arguments, Console& console)>& command);

} // namespace tulvane::cli
