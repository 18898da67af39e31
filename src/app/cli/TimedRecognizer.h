#pragma once

#include <speech/Recognizer.h>

#include <QElapsedTimer>

namespace tulvane::cli {

/// Passes everything on, and keeps the last answer and how long the work took, for the figures. Main thread.
class TimedRecognizer final : public Recognizer {
public:
    explicit TimedRecognizer(Recognizer& recognizer) : m_recognizer(recognizer) {}

    [[nodiscard]] QFuture<QString> loadedModel() override;
    [[nodiscard]] QFuture<Loaded> load(const QString& file) override;
    [[nodiscard]] QFuture<Recognised> transcribe(Samples samples,
                                                 const TranscriptionOptions& options) override;

    /// Of the last transcription that has ended; empty after a failure.
    [[nodiscard]] const RecognisedText& last() const { return m_last; }
    [[nodiscard]] double transcribeSeconds() const { return m_transcribeSeconds; }
    /// Of all loads.
    [[nodiscard]] double loadSeconds() const { return m_loadSeconds; }

private:
    Recognizer& m_recognizer;
    RecognisedText m_last;
    double m_transcribeSeconds = 0;
    double m_loadSeconds = 0;
};

} // namespace tulvane::cli
