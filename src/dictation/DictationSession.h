#pragma once

#include <base/Clock.h>
#include <base/Result.h>
#include <base/Scheduler.h>
#include <dictation/Outcome.h>
#include <dictation/SessionError.h>
#include <dictation/TranscriptEntry.h>
#include <speech/TranscriptionOptions.h>

#include <QCoroTask>
#include <QList>
#include <QObject>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

class AppSettings;
class AudioRecorder;
class ModelFigures;
class ModelSource;
class Recognizer;
class StatsStore;

/// One pipeline from recording to text: checks what is needed, records, judges the audio, sees that the model
/// is loaded, transcribes, cleans, remembers and counts. Lives on the main thread; only the recogniser's work
/// happens elsewhere and is awaited. Its history is lost with the process, by design.
class DictationSession final : public QObject {
    Q_OBJECT

public:
    enum class State { idle, recording, transcribing };
    Q_ENUM(State)

    static constexpr qsizetype mostEntries = 25;

    /// What the session works with; all of it outlives the session.
    struct Dependencies {
        AppSettings& settings;
        AudioRecorder& recorder;
        ModelSource& models;
        Recognizer& engine;
        StatsStore& stats;
        Scheduler& scheduler;
        const Clock& clock;
        std::function<bool()> isMicrophoneAuthorized;
        qint64 threadCount = 1; ///< for the recogniser
        /// In place of what the settings say; the command line's words.
        std::optional<TranscriptionOptions> fixedOptions = std::nullopt;
        /// Gets what a model takes and how fast it is; may be null.
        ModelFigures* figures = nullptr;
    };

    explicit DictationSession(Dependencies dependencies, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(DictationSession)
    ~DictationSession() override;

    /// Begins a recording; nothing while one is under way or being transcribed.
    [[nodiscard]] Result<void, DictationError> start();
    /// Ends the recording and judges it, without transcribing.
    [[nodiscard]] StopResult stop();
    /// Turns what `stop` gave into text. After a failure the audio is kept for `retry`.
    [[nodiscard]] QCoro::Task<Result<Outcome, DictationError>> finish(StopResult stopped);
    /// Finishes the audio of the last failed transcription once more. `notRecording` when there is none.
    [[nodiscard]] QCoro::Task<Result<Outcome, DictationError>> retry();
    /// Abandons the recording; the audio is discarded. A transcription under way is not interrupted.
    void cancel();
    /// Loads the selected model in the background, if it is there and nothing is being loaded.
    void preloadModel();

    /// How long a recording that begins now lasts at most.
    [[nodiscard]] std::chrono::seconds longestRecording() const;
    [[nodiscard]] State state() const { return m_state; }
    [[nodiscard]] const QString& lastTranscript() const { return m_lastTranscript; }
    [[nodiscard]] const QList<TranscriptEntry>& history() const { return m_history; }
    [[nodiscard]] bool isModelLoading() const { return m_loads > 0; }
    /// The file of the model that the recogniser holds, as far as the session has seen; empty without one.
    [[nodiscard]] const QString& loadedModel() const { return m_loadedModel; }
    /// Whether the audio of a failed transcription is still in memory; gone once a later recording has given
    /// audio that is worth transcribing.
    [[nodiscard]] bool canRetry() const { return m_failedAudio.has_value() && m_state == State::idle; }

    /// Called when a recording has reached its longest permitted duration. It still runs.
    std::function<void()> onMaxDurationReached;
    /// Called after a recording was cancelled because the audio device changed.
    std::function<void()> onRecordingInterrupted;
    /// Called when the microphone of a recording has fallen silent for good. The recording still runs, and
    /// what was said so far is there for `stop`.
    std::function<void()> onInputStalled;

Q_SIGNALS:
    void stateChanged(tulvane::DictationSession::State state);
    void lastTranscriptChanged(const QString& text);
    void historyChanged();
    void modelLoadingChanged(bool loading);
    void loadedModelChanged();
    void canRetryChanged();

private:
    using Finished = Result<Outcome, DictationError>;

    [[nodiscard]] QCoro::Task<Finished> transcribe(RecordedAudio audio);
    [[nodiscard]] QCoro::Task<Result<void, DictationError>> ensureModelLoaded();
    [[nodiscard]] QCoro::Task<Result<void, DictationError>> load(QString file);
    [[nodiscard]] QCoro::Task<> preload();
    /// The engine has worked from `begin` until now.
    void noteSpeed(double seconds, std::chrono::nanoseconds begin);
    [[nodiscard]] Outcome conclude(const QString& text, double seconds);
    [[nodiscard]] TranscriptionOptions currentOptions() const;
    void setState(State state);
    void setFailedAudio(std::optional<RecordedAudio> audio);
    void changeLoads(int by);
    void setLoadedModel(const QString& file);
    void followRecorder();
    void startMaxDurationTimer();
    void followModels();
    void noteReadiness();

    Dependencies m_dependencies;
    State m_state = State::idle;
    QString m_lastTranscript;
    QList<TranscriptEntry> m_history;
    int m_loads = 0; ///< loads under way; two can overlap when the selection changes while one runs
    QString m_loadingFile;
    QString m_loadedModel;
    bool m_isPreloading = false; ///< from the question which model is loaded to the end of loading
    std::optional<RecordedAudio> m_failedAudio;
    std::unique_ptr<Scheduler::Token> m_maxDurationTimer;
    QString m_followedModelID;
    std::optional<bool> m_wasReady;
};

} // namespace tulvane
