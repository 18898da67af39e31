#pragma once

#include <QString>

#include <random>

namespace tulvane::test {

enum class LineBreaks { none, some };

/// So many characters (code points) of words, marks and spaces as they are dictated and as they are not, with
/// letters of one to four bytes in UTF-8, and often with spaces at the end. Never empty.
[[nodiscard]] QString randomText(std::mt19937& random, int characters, LineBreaks lineBreaks);

/// 1 to `longest`, the short ones as likely as the long ones; the first two calls' `index` give the two ends.
[[nodiscard]] int randomLength(std::mt19937& random, int index, int longest);

} // namespace tulvane::test
