#pragma once

#include <app/cli/Console.h>

#include <QStringList>

namespace tulvane {
class AppSettings;
}

namespace tulvane::cli {

/// `tulvane settings list | get KEY | set KEY VALUE`: shows and changes the stored preferences.
/// `arguments` are those after "settings"; `modelIDs` are the catalogue's, the permitted selected models.
/// `list` prints `key = value` in the order of the table, the value as JSON, so that its type shows and a
/// line is a line. `get` prints the bare value. `set` takes only what the settings page could choose, and
/// only preferences that this system writes. Main thread.
[[nodiscard]] int runSettings(const QStringList& arguments, Console& console, AppSettings& settings,
                              const QStringList& modelIDs);

} // namespace tulvane::cli
