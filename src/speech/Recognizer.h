#pragma once

#include <base/Result.h>
#include <speech/whisper/EngineError.h>
#include <speech/TranscriptionOptions.h>

#include <QFuture>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tulvane {

/// What the session asks of the recogniser. Called on the main thread; the work happens elsewhere, one call
/// after the other, in the order of the calls.
class Recognizer {
public:
    using Samples = std::shared_ptr<const std::vector<float>>;

    Recognizer() = default;
    Recognizer(const Recognizer&) = delete;
    Recognizer& operator=(const Recognizer&) = delete;
    virtual ~Recognizer() = default;

    /// The loaded model's file once everything asked before this is done; empty without a model.
    [[nodiscard]] virtual QFuture<QString> loadedModel() = 0;
    [[nodiscard]] virtual QFuture<Result<void, EngineError>> load(const QString& file) = 0;
    /// The raw text of mono samples, 16,000 a second.
    [[nodiscard]] virtual QFuture<Result<QString, EngineError>>
    transcribe(Samples samples, const TranscriptionOptions& options) = 0;
};

} // namespace tulvane
