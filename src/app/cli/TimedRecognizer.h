#pragma once

#include <speech/Recognizer.h>

#include <QElapsedTimer>

namespace tulvane::cli {

/// Passes everything on, and keeps the last text and how long the work took, for the figures. Main thread.
class TimedRecognizer final : public Recognizer {
public:
    explicit TimedRecognizer(Recognizer& recognizer) : m_recognizer(recognizer) {}

    [[nodiscard]] QFuture<QString> loadedModel() override;
    [[nodiscard]] QFuture<Result<void, EngineError>> load(const QString& file) override;
    [[nodiscard]] QFuture<Result<QString, EngineError>>
    transcribe(Samples samples, const TranscriptionOptions& options) override;

    /// Of the last transcription that has ended.
    [[nodiscard]] const QString& lastText() const { return m_lastText; }
    [[nodiscard]] double transcribeSeconds() const { return m_transcribeSeconds; }
    /// Of all loads.
    [[nodiscard]] double loadSeconds() const { return m_loadSeconds; }

private:
    Recognizer& m_recognizer;
    QString m_lastText;
    double m_transcribeSeconds = 0;
    double m_loadSeconds = 0;
};

} // namespace tulvane::cli
