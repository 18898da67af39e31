#pragma once

#include <speech/whisper/ModelHeader.h>

#include <QByteArray>
#include <QHash>

#include <array>

namespace tulvane {

/// One table of weights as a model file must hold it.
struct TensorShape {
    std::array<qint32, 3> extent{1, 1, 1}; ///< fastest first
    ggml_type type = GGML_TYPE_F32;

    [[nodiscard]] qint64 byteCount() const;
};

/// Every tensor of a model with this header, by name. The header must be without problems.
[[nodiscard]] QHash<QByteArray, TensorShape> expectedTensors(const ModelHeader& header);

} // namespace tulvane
