#pragma once

#include <app/cli/Console.h>
#include <base/Result.h>
#include <dictation/SettingsTab.h>

#include <QStringList>

#include <optional>

namespace tulvane::cli {

/// How the program is to be started: `tulvane [--background] [--page PAGE]`. A session manager that brings
/// the program back says `-session ID`, which is a start in the background.
struct LaunchOptions {
    bool background = false;         ///< without a window
    std::optional<SettingsTab> page; ///< the page to open on

    /// A status in place of the words means: end with it, all is said.
    [[nodiscard]] static Result<LaunchOptions, int> parse(const QStringList& arguments, Console& console);
};

} // namespace tulvane::cli
