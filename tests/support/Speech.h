#pragma once

#include <QString>

#include <vector>

namespace tulvane::test {

/// A sentence spoken by espeak-ng ("nb", "en-gb", "nb+f2", ...) as the engine takes it: mono, 16,000 samples
/// a second. Ends the test program when the speech programs are missing.
[[nodiscard]] std::vector<float> speakSentence(const QString& text, const QString& voice);

} // namespace tulvane::test
