#pragma once

#include <QtGlobal>

namespace tulvane {

/// The little-endian number that every ggml model file begins with.
inline constexpr quint32 modelSignature = 0x67676D6C;

} // namespace tulvane
