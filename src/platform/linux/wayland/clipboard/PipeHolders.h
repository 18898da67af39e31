#pragma once

#include <QtGlobal>

namespace tulvane {

/// Who reads a selection of ours. Wayland does not tell; but the reader made the pipe, holds its other end
/// while it waits, and the system shows a process's open files to other processes of the same user. Any
/// thread.
struct PipeHolders final {
    /// The program that the text is for, as far as it is known.
    struct Target {
        quint32 process = 0;
        bool isX11 = false; ///< the compositor makes the pipe in its stead
        quint32 compositor = 0;
    };
    enum class Reader {
        target,
        other,
        unknown, ///< the pipe's other end is held by none that we may look at, or the target is not known
    };

    /// Looks first where it most likely is; only another program's reading costs a look through all
    /// processes.
    [[nodiscard]] static Reader readerOf(int pipe, const Target& target);
};

} // namespace tulvane
