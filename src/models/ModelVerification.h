#pragma once

#include <base/Result.h>
#include <models/ModelError.h>
#include <models/WhisperModel.h>

#include <QString>

#include <atomic>

namespace tulvane {

/// The sizes that count as complete, in bytes, both inclusive: 85 % to 115 % of what the catalogue says.
struct AcceptedSizes {
    qint64 least = 0;
    qint64 most = 0;

    [[nodiscard]] static AcceptedSizes around(qint64 expected);
};

/// Checks a file against a catalogue entry: the ggml signature first (so that a web page in the file's place
/// is called what it is), then the size, then the checksum where the entry has one. Reads in pieces of 4 MiB;
/// a set `stop` ends the reading early, and then the result means nothing. Any thread.
[[nodiscard]] Result<void, ModelError> verifyModelFile(const QString& file, const WhisperModel& model,
                                                       const std::atomic<bool>& stop);
[[nodiscard]] Result<void, ModelError> verifyModelFile(const QString& file, const WhisperModel& model);

} // namespace tulvane
