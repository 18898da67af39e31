#pragma once

#include <QString>

namespace tulvane {

/// The words of a text: the pieces between white space that hold at least one letter or number. A lone dash
/// or an ellipsis is no word. Any thread.
[[nodiscard]] qint64 countWords(const QString& text);

/// The characters of a text as a reader counts them (an accented letter or an emoji of several code points is
/// one), without the white space around the text. Any thread.
[[nodiscard]] qint64 countCharacters(const QString& text);

} // namespace tulvane
