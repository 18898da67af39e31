#pragma once

#include <QByteArray>

namespace tulvane {

/// Cuts a prompt (UTF-8) to a tail that the library can take apart quickly.
///
/// The library uses the last 224 tokens of a prompt and no more, but splits the whole of it first, in a time
/// that grows with the square of each unbroken run and on a stack that a long run overflows. The tail kept
/// here holds the last 224 words, and thereby 224 tokens, for a word is one token or more; fewer words only
/// where they are so long that the squares of their lengths would add up to more than a run of 1024 bytes
/// costs alone. It begins where the library itself would begin a word, so its tokens are the very ones that
/// the whole prompt ends with; only inside a run of more than 1024 bytes does it begin elsewhere, and then
/// never inside a UTF-8 sequence.
[[nodiscard]] QByteArray limitedPrompt(const QByteArray& prompt);

} // namespace tulvane
