#pragma once

#include <QString>

namespace tulvane {

/// The two settings that shape a cleaned transcript.
struct CleanupOptions {
    bool autoCapitalize = true;
    bool appendTrailingSpace = true;
};

/// Turns the recogniser's raw text into the text that is counted, kept and inserted: annotations in square
/// brackets, the model's special tokens, music notes and the listed noise labels are removed, spacing is made
/// regular. Empty when nothing usable is left. A surrogate without its pair becomes U+FFFD. A pure function,
/// for any thread; its time grows with the length of the text and no faster, whatever stands in it.
[[nodiscard]] QString cleanTranscript(const QString& text, CleanupOptions options);

} // namespace tulvane
