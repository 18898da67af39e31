#pragma once

#include <speech/Recognizer.h>

namespace tulvane {

class WhisperEngine;

/// The whisper engine as the session asks for it. Main thread.
class EngineRecognizer final : public Recognizer {
public:
    /// The engine outlives this object.
    explicit EngineRecognizer(WhisperEngine& engine) : m_engine(engine) {}

    [[nodiscard]] QFuture<QString> loadedModel() override;
    [[nodiscard]] QFuture<Result<void, EngineError>> load(const QString& file) override;
    [[nodiscard]] QFuture<Result<QString, EngineError>>
    transcribe(Samples samples, const TranscriptionOptions& options) override;

private:
    WhisperEngine& m_engine;
};

} // namespace tulvane
