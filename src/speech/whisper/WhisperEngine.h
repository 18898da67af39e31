#pragma once

#include <ports/SystemMemory.h>
#include <speech/Recognizer.h>

#include <QThread>

#include <atomic>
#include <functional>

namespace tulvane {

class ModelRunner;

/// The recogniser over whisper.cpp, and the one object that talks to it. All work runs on a thread of its
/// own, one job at a time, so a load never overlaps a transcription and neither blocks the caller.
///
/// Thread: created, called and destroyed on one thread, the main thread in the program.
class WhisperEngine final : public Recognizer {
public:
    /// `backendFolder` (absolute) is the only folder in which the library looks for its computing backends.
    /// `memory` must outlive the engine. Loads nothing yet. The first engine of the process redirects the
    /// library's log lines into the program's log.
    WhisperEngine(const QString& backendFolder, const SystemMemory& memory);
    /// `makeRunner` makes what the work is done by, around the engine's own way on the processor. It is
    /// called on the engine's thread, and what it makes is used and destroyed there.
    using MakeRunner = std::function<std::unique_ptr<ModelRunner>(std::unique_ptr<ModelRunner> processor)>;
    WhisperEngine(const QString& backendFolder, const SystemMemory& memory, const MakeRunner& makeRunner);
    WhisperEngine(const WhisperEngine&) = delete;
    WhisperEngine& operator=(const WhisperEngine&) = delete;
    /// Abandons a load in flight, waits for a transcription in flight (the library cannot end one early, and
    /// it may take a minute), and frees the model. Jobs that have not begun fail.
    ~WhisperEngine() override;

    [[nodiscard]] QFuture<QString> loadedModel() override;
    [[nodiscard]] QFuture<Loaded> load(const QString& file) override;
    /// Less than 1.2 s is padded with silence. More than 2^31-1 samples, or a thread count that does not fit
    /// in 32 bits, is a programming error and stops the process.
    [[nodiscard]] QFuture<Recognised> transcribe(Samples samples,
                                                 const TranscriptionOptions& options) override;
    /// Frees the loaded model, if any.
    QFuture<void> unload();

private:
    template <class T>
    [[nodiscard]] QFuture<T> post(std::function<T()> job, const T& refusal);

    std::atomic<bool> m_closing = false;
    std::unique_ptr<ModelRunner> m_core; ///< the worker's alone
    QThread m_thread;
    QObject m_worker; ///< lives on the thread; jobs are its events
};

} // namespace tulvane
