#pragma once

#include <QFile>

struct whisper_context;

namespace tulvane {

/// Has the library load a model from a file that passed the check and is still open, so that what was checked
/// and what is loaded are one file, whatever its path has become; the library's own way of opening a path
/// also fails on long ones. Null when the library cannot load it; nothing is thrown.
[[nodiscard]] whisper_context* loadModel(QFile& file);

} // namespace tulvane
