#pragma once

#include <base/Result.h>
#include <ports/SystemMemory.h>
#include <speech/whisper/EngineError.h>
#include <speech/TranscriptionOptions.h>

#include <QString>

#include <memory>
#include <vector>

struct whisper_context;

namespace tulvane {

class WhisperParameters;

/// What the engine does, step by step and on the calling thread: the state behind WhisperEngine. One object
/// is used by one thread. Nothing is thrown.
class EngineCore final {
public:
    EngineCore(const QString& backendFolder, const SystemMemory& memory);
    EngineCore(const EngineCore&) = delete;
    EngineCore& operator=(const EngineCore&) = delete;
    ~EngineCore();

    [[nodiscard]] Result<void, EngineError> load(const QString& modelFile);
    void unload();
    [[nodiscard]] Result<QString, EngineError> transcribe(std::vector<float> samples,
                                                          const TranscriptionOptions& options);

    [[nodiscard]] QString loadedModel() const { return m_loadedModel; }
    [[nodiscard]] QString lastLanguage() const { return m_lastLanguage; }

private:
    struct Free {
        void operator()(whisper_context* context) const;
    };

    [[nodiscard]] whisper_context* open(const QString& modelFile) const;
    [[nodiscard]] bool hasMemoryFor(qint64 bytes, qint64 addressSpace) const;
    [[nodiscard]] bool knowsLanguage(const WhisperParameters& parameters) const;
    [[nodiscard]] qint32 run(const WhisperParameters& parameters, const std::vector<float>& samples);
    [[nodiscard]] QString joinedSegments() const;

    QString m_backendFolder;
    const SystemMemory& m_memory;
    std::unique_ptr<whisper_context, Free> m_context;
    QString m_loadedModel;
    QString m_lastLanguage;
};

} // namespace tulvane
