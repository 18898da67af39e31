#pragma once

#include <app/cli/Console.h>

#include <QStringList>

#include <functional>

namespace tulvane::cli {

/// What `forget` works on.
struct ForgetContext {
    /// What a run of the program leaves behind: files, folders, and files by a pattern with "*" in the last
    /// part
    /// ("/home/me/.config/com.dunio.Tulvane.json*"). Only what exists is removed.
    QStringList traces;
    /// Whether the resident program runs. It would write its files again.
    std::function<bool()> isProgramRunning;
};

/// `tulvane forget --all [--yes]`: removes settings, counters, speech models and the start at login, after
/// asking on `out` and reading the answer from `in`; `--yes` does not ask. `arguments` are those after
/// "forget". Reports each path that is removed on `out`, and each that cannot be on `err`. A link is removed,
/// never what it points to. Main thread.
[[nodiscard]] int runForget(const QStringList& arguments, const ForgetContext& context, Console& console);

} // namespace tulvane::cli
