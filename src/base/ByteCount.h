#pragma once

#include <QString>

namespace tulvane {

/// A number of bytes as people read file sizes: decimal units (1 MB is 1,000,000 bytes), whole kilobytes, one
/// decimal for megabytes, two from gigabytes on, trailing zeros left out, in the default locale's digits.
/// "Zero KB", "1 byte", "999 bytes", "539 MB", "1.53 GB". Any thread, as `translate()`.
[[nodiscard]] QString byteCountText(qint64 bytes);

} // namespace tulvane
