#pragma once

#include <QFile>

#include <atomic>
#include <functional>

struct whisper_context;

namespace tulvane {

/// Has the library load a model from a file that passed the check and is still open, so that what was checked
/// and what is loaded are one file, whatever its path has become; the library's own way of opening a path
/// also fails on long ones. Null when the library cannot load it, and soon after `closing` was set by any
/// thread; nothing is thrown. `progress`, where there is one, is called at each read.
[[nodiscard]] whisper_context* loadModel(QFile& file, const std::atomic<bool>& closing,
                                         const std::function<void()>& progress = {});

} // namespace tulvane
