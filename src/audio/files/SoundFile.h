#pragma once

#include <audio/files/Sound.h>
#include <base/Result.h>

namespace tulvane {

/// Reads any file that libsndfile reads, of any rate and channel count, through the converter that the
/// microphone uses. Decodes in blocks, so memory is that of the result. Any thread; blocks for the reading.
[[nodiscard]] Result<Sound, SoundFileError> readSoundFile(const QString& path);

} // namespace tulvane
