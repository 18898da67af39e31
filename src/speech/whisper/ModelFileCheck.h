#pragma once

#include <base/Result.h>
#include <speech/whisper/ModelHeader.h>

#include <QIODevice>
#include <QString>

namespace tulvane {

/// What a sound model file says of its model.
struct ModelFacts {
    ModelHeader header;
    qint64 weightBytes = 0; ///< all tensors together

    /// Bytes of memory that the model takes while it transcribes: weights, caches and working space, those
    /// included that the library takes only when a first attempt at decoding fails.
    [[nodiscard]] qint64 neededMemory() const;
    /// Bytes of address space for the same; more, because not all of it is ever used.
    [[nodiscard]] qint64 neededAddressSpace() const;
};

/// Reads a ggml Whisper file's structure from end to end, because the library trusts what it loads: numbers
/// in their ranges, a mel filter bank of the right size and of possible values, a whole vocabulary, every
/// tensor exactly once with its dimensions and its type, and then the end of the file. Weights are not looked
/// at (they are skipped, which keeps this quick for any size), so a damaged weight or a damaged word passes;
/// it yields wrong text, and cannot make the library read or write where it should not.
///
/// Fails with the reason, for the log. `file` is open and readable; its position is undefined afterwards.
[[nodiscard]] Result<ModelFacts, QString> checkModelFile(QIODevice& file);

} // namespace tulvane
