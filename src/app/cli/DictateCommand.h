#pragma once

#include <app/cli/TranscribeCommand.h>

namespace tulvane {
class AudioInput;
class AppSettings;
class StatsStore;
} // namespace tulvane

namespace tulvane::cli {

/// What `dictate` needs besides what `transcribe` does. All outlive the call.
struct DictationContext {
    RecognitionContext recognition;
    AppSettings& settings;
    AudioInput& input;
    StatsStore& stats;
    int keyboard = 0; ///< the descriptor on which Enter ends the recording
};

/// `tulvane dictate ...`: records the default microphone until Enter, Ctrl+C, `--seconds` or the longest
/// permitted duration, and prints the cleaned text on `out`. Runs an event loop; main thread.
[[nodiscard]] int runDictate(const QStringList& arguments, const DictationContext& context, Console& console);

} // namespace tulvane::cli
