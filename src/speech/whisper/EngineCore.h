#pragma once

#include <ports/SystemMemory.h>
#include <speech/ModelRunner.h>

#include <QString>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

struct whisper_context;

namespace tulvane {

class WhisperParameters;

/// whisper.cpp, step by step and on the calling thread: the state behind WhisperEngine.
class EngineCore final : public ModelRunner {
public:
    /// Once `closing` is set, by any thread, a load in flight fails. All outlive the core.
    EngineCore(const QString& backendFolder, const SystemMemory& memory, const std::atomic<bool>& closing);
    EngineCore(const EngineCore&) = delete;
    EngineCore& operator=(const EngineCore&) = delete;
    ~EngineCore() override;

    /// The models to come are loaded onto a device, so the machine's own memory is not asked about.
    void expectDevice() { m_isOnDevice = true; }
    /// Called again and again while a model is read and a take is decoded; between two calls lies no more
    /// than the encoding of half a minute of speech. Set before the first load.
    void setProgress(std::function<void()> progress) { m_progress = std::move(progress); }

    [[nodiscard]] Recognizer::Loaded load(const QString& modelFile) override;
    void unload() override;
    [[nodiscard]] Recognizer::Recognised transcribe(const std::vector<float>& samples,
                                                    const TranscriptionOptions& options) override;

    [[nodiscard]] QString loadedModel() const override { return m_loadedModel; }

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
    bool m_isOnDevice = false;
    std::function<void()> m_progress;
};

} // namespace tulvane
