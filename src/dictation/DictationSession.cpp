#include <audio/AudioRecorder.h>
#include <base/Log.h>
#include <dictation/DictationSession.h>
#include <dictation/ModelFigures.h>
#include <dictation/ModelSource.h>
#include <settings/AppSettings.h>
#include <speech/CleanTranscript.h>
#include <speech/Recognizer.h>
#include <stats/StatsStore.h>

#include <QCoroFuture>
#include <QPointer>

#include <algorithm>
#include <limits>

namespace tulvane {

namespace {

constexpr double samplesPerSecond = 16000.0;
constexpr double shortestSeconds = 0.4;
constexpr float quietestPeakDB = -50.0F;
constexpr qint64 shortestMaxDuration = 10;
constexpr qint64 longestMaxDuration = std::numeric_limits<int>::max() / 1000; // a timer counts milliseconds
constexpr std::size_t warmUpSamples = 24000;                                  // 1.5 s of silence

} // namespace

DictationSession::DictationSession(Dependencies dependencies, QObject* parent)
    : QObject(parent),
      m_dependencies(std::move(dependencies))
{
    followRecorder();
    followModels();
}

DictationSession::~DictationSession()
{
    m_dependencies.recorder.setEngineConfigurationChanged({});
    m_dependencies.recorder.setInputStalled({});
}

void DictationSession::followRecorder()
{
    m_dependencies.recorder.setEngineConfigurationChanged([self = QPointer(this)] {
        if (!self || self->m_state != State::recording)
            return;
        self->cancel();
        if (self->onRecordingInterrupted)
            self->onRecordingInterrupted();
    });
    m_dependencies.recorder.setInputStalled([self = QPointer(this)] {
        if (self && self->m_state == State::recording && self->onInputStalled)
            self->onInputStalled();
    });
}

void DictationSession::followModels()
{
    m_followedModelID = m_dependencies.settings.selectedModelID();
    connect(&m_dependencies.settings.selectedModelID, &AnySetting::changed, this, [this] {
        const QString id = m_dependencies.settings.selectedModelID();
        if (std::exchange(m_followedModelID, id) != id)
            preloadModel();
    });
    connect(&m_dependencies.models, &ModelSource::statesChanged, this, &DictationSession::noteReadiness);
    noteReadiness();
}

void DictationSession::noteReadiness()
{
    const bool isReady = m_dependencies.models.readyFile().has_value();
    if (std::exchange(m_wasReady, isReady) != isReady && isReady)
        preloadModel();
}

Result<void, DictationError> DictationSession::start()
{
    if (m_state != State::idle)
        return {};
    if (!m_dependencies.isMicrophoneAuthorized())
        return failure(DictationError(SessionError::microphonePermission));
    if (!m_dependencies.models.readyFile())
        return failure(DictationError(SessionError::modelNotDownloaded));
    if (auto started = m_dependencies.recorder.start(); !started)
        return failure(DictationError(started.error()));

    setState(State::recording);
    preloadModel();
    startMaxDurationTimer();
    return {};
}

std::chrono::seconds DictationSession::longestRecording() const
{
    return std::chrono::seconds(
        std::clamp(m_dependencies.settings.maxRecordingSeconds(), shortestMaxDuration, longestMaxDuration));
}

void DictationSession::startMaxDurationTimer()
{
    m_maxDurationTimer = m_dependencies.scheduler.after(longestRecording(), [self = QPointer(this)] {
        if (!self || self->m_state != State::recording)
            return;
        qCInfo(lcApp, "Max recording length reached");
        if (self->onMaxDurationReached)
            self->onMaxDurationReached();
    });
}

StopResult DictationSession::stop()
{
    if (m_state != State::recording)
        return Outcome::nothingHeard();
    m_maxDurationTimer.reset();
    auto samples = std::make_shared<const std::vector<float>>(m_dependencies.recorder.stop());
    const double seconds = static_cast<double>(samples->size()) / samplesPerSecond;
    if (seconds < shortestSeconds) {
        setState(State::idle);
        return Outcome::tooShort();
    }
    if (!AudioRecorder::peakExceeds(*samples, quietestPeakDB)) {
        setState(State::idle);
        return Outcome::nothingHeard();
    }
    setFailedAudio(std::nullopt);
    setState(State::transcribing);
    return RecordedAudio{std::move(samples), seconds};
}

QCoro::Task<Result<Outcome, DictationError>> DictationSession::finish(StopResult stopped)
{
    if (const auto* rejected = std::get_if<Outcome>(&stopped))
        co_return *rejected;
    setState(State::transcribing);
    co_return co_await transcribe(std::get<RecordedAudio>(std::move(stopped)));
}

QCoro::Task<Result<Outcome, DictationError>> DictationSession::retry()
{
    if (!canRetry())
        co_return failure(DictationError(SessionError::notRecording));
    RecordedAudio audio = *m_failedAudio;
    setState(State::transcribing);
    co_return co_await transcribe(std::move(audio));
}

QCoro::Task<DictationSession::Finished> DictationSession::transcribe(RecordedAudio audio)
{
    const QPointer<DictationSession> self(this);
    // The settings as they are now decide, whatever is changed while the recogniser works.
    const TranscriptionOptions options = currentOptions();
    const CleanupOptions cleanup{.autoCapitalize = m_dependencies.settings.autoCapitalize(),
                                 .appendTrailingSpace = m_dependencies.settings.appendTrailingSpace()};
    Result<void, DictationError> loaded = co_await ensureModelLoaded();
    if (!self)
        co_return Outcome::nothingRecognised();
    if (!loaded) {
        setFailedAudio(std::move(audio));
        setState(State::idle);
        co_return failure(loaded.error());
    }
    const auto begin = m_dependencies.clock.elapsed();
    const Recognizer::Recognised recognised =
        co_await m_dependencies.engine.transcribe(audio.samples, options);
    if (!self)
        co_return Outcome::nothingRecognised();
    if (recognised)
        noteSpeed(audio.seconds, begin);
    if (!recognised) {
        setFailedAudio(std::move(audio));
        setState(State::idle);
        co_return failure(DictationError(recognised.error()));
    }
    setFailedAudio(std::nullopt);
    co_return conclude(cleanTranscript(recognised->text, cleanup), audio.seconds);
}

void DictationSession::noteSpeed(double seconds, std::chrono::nanoseconds begin)
{
    if (m_dependencies.figures)
        m_dependencies.figures->noteDictation(m_loadedModel, seconds, m_dependencies.clock.elapsed() - begin,
                                              m_dependencies.clock.now());
}

Outcome DictationSession::conclude(const QString& text, double seconds)
{
    if (text.isEmpty()) {
        setState(State::idle);
        return Outcome::nothingRecognised();
    }
    m_lastTranscript = text;
    Q_EMIT lastTranscriptChanged(text);
    const QDateTime now = m_dependencies.clock.now();
    m_history.prepend({QUuid::createUuid(), now, text, seconds});
    if (m_history.size() > mostEntries)
        m_history.resize(mostEntries);
    Q_EMIT historyChanged();
    m_dependencies.stats.record(text, now, seconds);
    setState(State::idle);
    return Outcome::transcript(text, seconds);
}

QCoro::Task<Result<void, DictationError>> DictationSession::ensureModelLoaded()
{
    const QPointer<DictationSession> self(this);
    const std::optional<QString> file = m_dependencies.models.readyFile();
    if (!file)
        co_return failure(DictationError(SessionError::modelNotDownloaded));
    // Asked through the engine's queue: a load that a preload began counts once it has ended.
    const QString current = co_await m_dependencies.engine.loadedModel();
    if (!self)
        co_return {};
    setLoadedModel(current);
    if (current == *file)
        co_return {};
    co_return co_await load(*file);
}

QCoro::Task<Result<void, DictationError>> DictationSession::load(QString file)
{
    const QPointer<DictationSession> self(this);
    // Loading the same file again costs the engine nothing, and one warm-up is enough.
    const bool isFirst = std::exchange(m_loadingFile, file) != file;
    changeLoads(+1);
    if (m_dependencies.figures)
        m_dependencies.figures->noteLoading(m_loadedModel);
    const Recognizer::Loaded loaded = co_await m_dependencies.engine.load(file);
    if (!self)
        co_return {};
    // A load that fails leaves the engine without a model.
    setLoadedModel(loaded ? file : QString());
    if (loaded && isFirst) {
        // The first real dictation then runs at full speed; a failing warm-up changes nothing.
        const TranscriptionOptions warmUp{.language = QStringLiteral("no"),
                                          .initialPrompt = std::nullopt,
                                          .threadCount = m_dependencies.threadCount};
        const auto silence = std::make_shared<const std::vector<float>>(warmUpSamples, 0.0F);
        co_await m_dependencies.engine.transcribe(silence, warmUp);
        if (!self)
            co_return {};
        if (m_dependencies.figures)
            m_dependencies.figures->noteLoaded(file, m_dependencies.clock.now());
    }
    changeLoads(-1);
    if (!isModelLoading())
        m_loadingFile.clear();
    if (!loaded)
        co_return failure(DictationError(loaded.error()));
    co_return {};
}

void DictationSession::cancel()
{
    m_maxDurationTimer.reset();
    if (m_state != State::recording)
        return;
    static_cast<void>(m_dependencies.recorder.stop());
    setState(State::idle);
}

void DictationSession::preloadModel()
{
    if (!m_dependencies.models.readyFile() || isModelLoading() || m_isPreloading)
        return;
    m_isPreloading = true;
    static_cast<void>(preload());
}

QCoro::Task<> DictationSession::preload()
{
    const QPointer<DictationSession> self(this);
    const Result<void, DictationError> loaded = co_await ensureModelLoaded();
    if (self)
        self->m_isPreloading = false;
    if (!loaded)
        qCCritical(lcApp, "Preload failed: %ls", qUtf16Printable(loaded.error().description()));
}

TranscriptionOptions DictationSession::currentOptions() const
{
    if (m_dependencies.fixedOptions)
        return *m_dependencies.fixedOptions;
    return {.language = rawValue(m_dependencies.settings.language()),
            .initialPrompt = m_dependencies.settings.vocabularyPrompt(),
            .threadCount = m_dependencies.threadCount,
            .translate = false};
}

void DictationSession::setState(State state)
{
    if (std::exchange(m_state, state) == state)
        return;
    Q_EMIT stateChanged(state);
    if (m_failedAudio)
        Q_EMIT canRetryChanged();
}

void DictationSession::setFailedAudio(std::optional<RecordedAudio> audio)
{
    const bool couldRetry = canRetry();
    m_failedAudio = std::move(audio);
    if (couldRetry != canRetry())
        Q_EMIT canRetryChanged();
}

void DictationSession::setLoadedModel(const QString& file)
{
    if (std::exchange(m_loadedModel, file) != file)
        Q_EMIT loadedModelChanged();
}

void DictationSession::changeLoads(int by)
{
    const bool wasLoading = isModelLoading();
    m_loads += by;
    if (wasLoading != isModelLoading())
        Q_EMIT modelLoadingChanged(isModelLoading());
}

} // namespace tulvane
