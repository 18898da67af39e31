#pragma once

#include <app/cli/Console.h>

#include <QString>
#include <QStringList>

#include <functional>

namespace tulvane {
class ModelManager;
}

namespace tulvane::cli {

/// What `models` works on besides its words.
struct ModelsContext {
    ModelManager& manager;
    QString selectedModelID;
    /// Asked once to call the given function when the user interrupts; may be empty. A download is then
    /// cancelled, and what has arrived is kept.
    std::function<void(std::function<void()> cancel)> onInterrupt = {};
};

/// `tulvane models list|path ID|download ID|cancel ID|delete ID|verify ID FILE [--json]`. `arguments` are
/// those after "models". Runs the event loop until it is done. Main thread.
[[nodiscard]] int runModels(const QStringList& arguments, const ModelsContext& context, Console& console);

} // namespace tulvane::cli
