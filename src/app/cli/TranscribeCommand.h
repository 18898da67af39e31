#pragma once

#include <app/cli/Console.h>
#include <app/program/ProgramFolders.h>
#include <audio/files/Sound.h>
#include <base/Result.h>

#include <QStringList>

#include <functional>
#include <optional>

namespace tulvane {
class AppSettings;
class ComputingStatus;
class Recognizer;
} // namespace tulvane

namespace tulvane::cli {

/// What `transcribe` and `dictate` need besides their words.
struct RecognitionContext {
    const AppSettings& settings;
    /// The recogniser of the process, made by the first call.
    std::function<Recognizer&()> recognizer;
    ProgramFolders folders;
    /// The file of a model that the catalogue knows by this identifier; none for an unknown identifier.
    std::function<std::optional<QString>(const QString& id)> catalogueFile;
    /// What the recogniser is asked to compute with, and where it does.
    ComputingStatus& computing;
};

using SoundReader = std::function<Result<Sound, SoundFileError>(const QString& path)>;

/// `tulvane transcribe FILE ...`: a sound file to clean text on `out`. Blocks until it is done.
[[nodiscard]] int runTranscribe(const QStringList& arguments, const RecognitionContext& context,
                                const SoundReader& readSound, Console& console);

} // namespace tulvane::cli
