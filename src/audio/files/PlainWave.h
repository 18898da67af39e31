#pragma once

#include <audio/files/Sound.h>
#include <base/Result.h>

#include <QString>

namespace tulvane {

/// Whether a file is of the one kind that needs no conversion, by its first bytes and its size: a RIFF WAVE
/// file of one channel with 16,000 samples a second of 16 bits, the form in which most recordings for speech
/// recognition come, whole and with nothing after its samples. Any thread; blocks.
[[nodiscard]] bool isPlainWave(const QString& path);

/// Reads such a file, without the libraries that decode all other formats: the samples are those that
/// `readSoundFile` reads from it. Fails as `unreadable` where the file is not, or is no longer, such a one.
/// Any thread; blocks.
[[nodiscard]] Result<Sound, SoundFileError> readPlainWave(const QString& path);

} // namespace tulvane
