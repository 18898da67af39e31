#pragma once

#include <ports/SystemMemory.h>
#include <speech/Recognizer.h>

#include <QString>

#include <atomic>
#include <memory>
#include <vector>

struct whisper_context;

namespace tulvane {

class WhisperParameters;

/// What the engine does, step by step and on the calling thread: the state behind WhisperEngine. One object
/// is used by one thread. Nothing is thrown.
class EngineCore final {
public:
    /// Once `closing` is set, by any thread, a load in flight fails. All outlive the core.
    EngineCore(const QString& backendFolder, const SystemMemory& memory, const std::atomic<bool>& closing);
    EngineCore(const EngineCore&) = delete;
    EngineCore& operator=(const EngineCore&) = delete;
    ~EngineCore();

    [[nodiscard]] Recognizer::Loaded load(const QString& modelFile);
    void unload();
    [[nodiscard]] Recognizer::Recognised transcribe(std::vector<float> samples,
                                                    const TranscriptionOptions& options);

    [[nodiscard]] QString loadedModel() const { return m_loadedModel; }

private:
    struct Free {
        void operator()(whisper_context* context) const;
    };

    [[nodiscard]] Result<whisper_context*, EngineObstacle> open(const QString& modelFile) const;
    [[nodiscard]] Result<void, EngineObstacle> checkMemory(qint64 bytes, qint64 addressSpace) const;
    [[nodiscard]] bool knowsLanguage(const WhisperParameters& parameters) const;
    [[nodiscard]] qint32 run(const WhisperParameters& parameters, const std::vector<float>& samples);
    [[nodiscard]] QString joinedSegments() const;
    [[nodiscard]] QString usedLanguage() const;

    QString m_backendFolder;
    const SystemMemory& m_memory;
    const std::atomic<bool>& m_closing;
    std::unique_ptr<whisper_context, Free> m_context;
    QString m_loadedModel;
};

} // namespace tulvane
