#pragma once

#include <app/program/ProgramFolders.h>
#include <app/cli/Console.h>

#include <QStringList>

#include <functional>
#include <optional>

namespace tulvane {
class AppSettings;
class WhisperEngine;
} // namespace tulvane

namespace tulvane::cli {

/// What `transcribe` and `dictate` need besides their words.
struct RecognitionContext {
    const AppSettings& settings;
    /// The engine of the process, made when it is first asked for.
    std::function<WhisperEngine&()> engine;
    ProgramFolders folders;
    /// The file of a model that the catalogue knows by this identifier; none for an unknown identifier.
    std::function<std::optional<QString>(const QString& id)> catalogueFile;
};

/// `tulvane transcribe FILE ...`: any sound file to clean text on `out`. Blocks until it is done.
[[nodiscard]] int runTranscribe(const QStringList& arguments, const RecognitionContext& context,
                                Console& console);

} // namespace tulvane::cli
