#pragma once

#include <app/cli/Console.h>
#include <speech/device/ComputingDevice.h>

#include <QStringList>

#include <functional>

namespace tulvane::cli {

/// What `devices` needs besides its words.
struct DevicesContext {
    /// What the drivers offer. Blocks.
    std::function<ComputingDevices()> devices;
    QStringList processors;   ///< as the speech library names them: "CPU: ..."
    QString wanted;           ///< the setting
    bool isInstalled = false; ///< whether the backend for graphics cards is
};

/// `tulvane devices`: one line each, what `auto` takes first; with `--json` an array of objects.
[[nodiscard]] int runDevices(const QStringList& arguments, const DevicesContext& context, Console& console);

} // namespace tulvane::cli
