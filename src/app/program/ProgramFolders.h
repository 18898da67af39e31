#pragma once

#include <QString>

namespace tulvane {

/// The folders that travel with the program, found from the executable's own place, so that the build tree,
/// a package and a moved copy all work. Needs the QCoreApplication; main thread.
struct ProgramFolders {
    QString executables; ///< bin/
    QString resources;   ///< share/tulvane/
    QString backends;    ///< where ggml's loadable backends are looked for, and nowhere else

    [[nodiscard]] static ProgramFolders ofThisProgram();
    /// The executable that the user and the desktop call.
    [[nodiscard]] QString commandLine() const { return executables + QStringLiteral("/tulvane"); }
    /// The executable with the commands that need other processes: `commandLine()` becomes it for these.
    [[nodiscard]] QString commandProgram() const { return executables + QStringLiteral("/tulvane-commands"); }
    /// The executable that runs on the desktop, with windows: kept apart so that the commands, which run
    /// often and briefly, never load what draws them.
    [[nodiscard]] QString desktopProgram() const { return executables + QStringLiteral("/tulvane-desktop"); }
    /// The executable that downloads in the background.
    [[nodiscard]] QString transferHelper() const
    {
        return executables + QStringLiteral("/tulvane-transfers");
    }
    /// The executable that computes on a graphics card.
    [[nodiscard]] QString computeHelper() const { return executables + QStringLiteral("/tulvane-compute"); }
    /// ggml's backend for graphics cards, which only that executable loads, and which may be absent.
    [[nodiscard]] QString deviceBackend() const
    {
        return backends + QStringLiteral("/devices/libggml-vulkan.so");
    }
    /// Our own page about what the desktop has to allow.
    [[nodiscard]] QString helpPage() const { return resources + QStringLiteral("/help/permissions.html"); }
    /// What the synthetic voice says in this language of the interface ("nb").
    [[nodiscard]] QString demoSpeech(const QString& language) const
    {
        return resources + QStringLiteral("/speech/%1.wav").arg(language);
    }
    /// The bundled demo model's file.
    [[nodiscard]] QString demoModel() const { return resources + QStringLiteral("/models/demo.bin"); }
};

} // namespace tulvane
