#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtGlobal>

#include <functional>

namespace tulvane::test {

/// The shape of a made-up speech model: the ggml Whisper format with any numbers in it.
struct TinyModel {
    qint32 vocabulary = 51865;
    qint32 audioContext = 1500;
    qint32 audioState = 8;
    qint32 audioHeads = 1;
    qint32 audioLayers = 1;
    qint32 textContext = 448;
    qint32 textState = 8;
    qint32 textHeads = 1;
    qint32 textLayers = 1;
    qint32 mels = 80;
    qint32 fileType = 1; ///< 0 F32, 1 F16, 2007 Q8_0, ...
    qint32 words = 50257;
    quint32 seed = 1;

    /// The whole file, with small random weights (quantized ones are zero). With F16 and F32 weights the
    /// model always writes one and the same word and ends, which keeps transcriptions short.
    [[nodiscard]] QByteArray bytes() const;
    /// Writes the file with all weights zero and as holes, so that a large shape takes no room on disk.
    void writeSparse(const QString& path) const;
};

/// What a piece of a model file is.
enum class Piece {
    signature,
    header,
    filterSizes,
    filterValues,
    wordCount,
    wordLength,
    wordBytes,
    tensorNumbers, ///< number of dimensions, length of the name, type
    tensorExtents,
    tensorName,
    tensorData,
};

struct PieceOfModel {
    Piece kind;
    qint64 offset;
    qint64 size;
};

/// Every piece of a sound model file, in order, without a gap. Knows nothing of the program's own reader.
[[nodiscard]] QList<PieceOfModel> piecesOf(const QByteArray& model);

} // namespace tulvane::test
