#pragma once

#include <app/cli/CommandLine.h>
#include <app/cli/TranscribeCommand.h>

#include <map>

// The commands that need no other process. They run often and briefly, so the executable that the user calls
// holds them alone, and loads no library of a display, a sound server or a bus. Main thread; all need the
// QCoreApplication.
namespace tulvane {

/// The process's recogniser and folders, with the user's settings, which outlive the context.
/// `waitsForTrial`: see RecognizerServices.
[[nodiscard]] cli::RecognitionContext recognitionContext(const AppSettings& settings, bool waitsForTrial);

[[nodiscard]] int transcribe(const QStringList& arguments, const cli::SoundReader& readSound,
                             cli::Console& console);
[[nodiscard]] int showStatistics(const QStringList& arguments, cli::Console& console);

/// What runs each of them. `transcribe` is only for sound files that need no decoder, and `others` runs it
/// for all else.
[[nodiscard]] std::map<QString, cli::Run> localCommands(const cli::Run& others);

} // namespace tulvane
