#pragma once

#include <QString>
#include <QtGlobal>

#include <ggml.h>

#include <array>
#include <optional>

namespace tulvane {

/// The eleven numbers that a ggml Whisper file begins with after its signature, in their order there.
struct ModelHeader {
    static constexpr qsizetype byteCount = 11 * sizeof(qint32);

    qint32 vocabulary = 0;
    qint32 audioContext = 0; ///< encoder positions, for 30 s of audio
    qint32 audioState = 0;   ///< width of the encoder
    qint32 audioHeads = 0;
    qint32 audioLayers = 0;
    qint32 textContext = 0; ///< decoder positions
    qint32 textState = 0;   ///< width of the decoder
    qint32 textHeads = 0;
    qint32 textLayers = 0;
    qint32 mels = 0;     ///< bands of the spectrogram
    qint32 fileType = 0; ///< kind of the large weights, and a thousand times the quantization's version

    [[nodiscard]] static ModelHeader fromBytes(const std::array<char, byteCount>& bytes);

    /// What is wrong with the numbers for a model that the library can run; empty when nothing is.
    [[nodiscard]] QString problem() const;
    /// How the large weights are stored; none for a kind that no converter or quantizer writes.
    [[nodiscard]] std::optional<ggml_type> weightType() const;
    /// Whether the model knows more languages than English.
    [[nodiscard]] bool isMultilingual() const;
};

} // namespace tulvane
