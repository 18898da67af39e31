#pragma once

#include <base/Result.h>
#include <ports/SystemMemory.h>
#include <speech/whisper/EngineError.h>
#include <speech/TranscriptionOptions.h>

#include <QFuture>
#include <QMutex>
#include <QString>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

namespace tulvane {

class EngineCore;

/// The one object that talks to whisper.cpp. It holds at most one loaded speech model and turns samples into
/// raw text. Everything that it is asked runs on a thread of its own, one job at a time and in the order
/// asked, so a load never overlaps a transcription and neither blocks the caller; callers await the futures,
/// which are always settled with a result.
///
/// Thread: created, asked and destroyed on one thread, the main thread in the program.
class WhisperEngine final {
public:
    /// `backendFolder` (absolute) is where the library's computing backends are looked for, and nowhere else.
    /// `memory` must outlive the engine. Nothing is loaded yet. The first engine of the process redirects the
    /// library's log lines into the program's log.
    WhisperEngine(const QString& backendFolder, const SystemMemory& memory);
    WhisperEngine(const WhisperEngine&) = delete;
    WhisperEngine& operator=(const WhisperEngine&) = delete;
    /// Waits for the job in flight and frees the model. Jobs that have not begun are answered as failed.
    ~WhisperEngine();

    /// Makes the file the loaded model; nothing happens when it is already. The model before it is freed
    /// first, so a failure, `modelLoadFailed`, leaves no model loaded.
    [[nodiscard]] QFuture<Result<void, EngineError>> load(const QString& modelFile);

    /// Frees the loaded model, if any.
    QFuture<void> unload();

    /// The recognised text as the library gives it: not trimmed, empty where nothing was heard. `samples` are
    /// mono, 16,000 per second, nominally between -1 and 1; less than 1.2 s is padded with silence. Fails
    /// with `noModelLoaded` or `transcriptionFailed`; the model stays loaded. More than 2^31-1 samples, or a
    /// thread count that does not fit in 32 bits, is a programming error and stops the process.
    [[nodiscard]] QFuture<Result<QString, EngineError>> transcribe(std::vector<float> samples,
                                                                   const TranscriptionOptions& options);

    /// The same for samples that the caller keeps, to try them again after a failure; copied on the thread.
    [[nodiscard]] QFuture<Result<QString, EngineError>>
    transcribe(std::shared_ptr<const std::vector<float>> samples, const TranscriptionOptions& options);

    /// The file whose model is loaded once every job asked before this one has ended; empty when none is.
    [[nodiscard]] QFuture<QString> settledModel();
    /// The file whose model is loaded as the last finished job left it; empty when there is none. Any thread.
    [[nodiscard]] QString loadedModel() const;
    /// The language code of the last successful transcription, the detected one after "auto". Any thread.
    [[nodiscard]] QString lastLanguage() const;

private:
    template <class T>
    [[nodiscard]] QFuture<T> post(std::function<T()> job, const T& refusal);
    void publishState();

    std::unique_ptr<EngineCore> m_core; ///< the worker's alone
    std::atomic<bool> m_closing = false;
    mutable QMutex m_mutex; ///< guards the two below
    QString m_loadedModel;
    QString m_lastLanguage;
    QThread m_thread;
    QObject m_worker; ///< lives on the thread; jobs are its events
};

} // namespace tulvane
