#pragma once

#include <app/cli/CommandSyntax.h>
#include <app/cli/TranscribeCommand.h>
#include <base/Result.h>
#include <speech/TranscriptionOptions.h>

namespace tulvane::cli {

/// The words that `transcribe` and `dictate` share: which model, language, prompt, threads and output.
struct RecognitionArguments {
    QString modelFile;
    TranscriptionOptions options;
    bool raw = false;
    bool json = false;
};

/// Adds the shared options to a command's syntax.
void addRecognitionArguments(CommandSyntax& syntax);

/// Reads them back; what was not given comes from the settings. A status means: the problem is said.
[[nodiscard]] Result<RecognitionArguments, int>
readRecognitionArguments(const CommandSyntax& syntax, const RecognitionContext& context, Console& console);

/// Says on `err` that a device failed, or that the one that was asked for could not be had, once the model is
/// loaded.
void warnOfProcessor(const RecognitionContext& context, Console& console);

} // namespace tulvane::cli
