#include <speech/whisper/BackendLoader.h>
#include <speech/whisper/EngineCore.h>
#include <speech/whisper/LibraryLog.h>
#include <speech/whisper/WhisperEngine.h>

#include <QMetaObject>
#include <QMutexLocker>
#include <QPromise>

#include <utility>

namespace tulvane {

namespace {

// The library splits prompts by a recursive matcher, whatever the limit that the user's shell sets.
constexpr uint workerStack = 16U * 1024 * 1024;

void prepareProcessOnce()
{
    static const bool prepared = [] {
        ignoreBackendsOfTheEnvironment();
        LibraryLog::install();
        return true;
    }();
    Q_UNUSED(prepared)
}

} // namespace

WhisperEngine::WhisperEngine(const QString& backendFolder, const SystemMemory& memory)
    : m_core(std::make_unique<EngineCore>(backendFolder, memory))
{
    prepareProcessOnce();
    m_thread.setObjectName(QStringLiteral("whisper"));
    m_thread.setStackSize(workerStack);
    m_worker.moveToThread(&m_thread);
    m_thread.start();
}

WhisperEngine::~WhisperEngine()
{
    m_closing = true;
    // Behind all other jobs, so that each of them is answered before the thread ends.
    QMetaObject::invokeMethod(
        &m_worker,
        [this] {
            m_core.reset();
            m_thread.quit();
        },
        Qt::QueuedConnection);
    m_thread.wait();
}

template <class T>
QFuture<T> WhisperEngine::post(std::function<T()> job, const T& refusal)
{
    const auto promise = std::make_shared<QPromise<T>>();
    promise->start();
    QMetaObject::invokeMethod(
        &m_worker,
        [this, promise, refusal, job = std::move(job)] {
            T result = m_closing ? refusal : job();
            publishState();
            promise->addResult(std::move(result));
            promise->finish();
        },
        Qt::QueuedConnection);
    return promise->future();
}

QFuture<Result<void, EngineError>> WhisperEngine::load(const QString& modelFile)
{
    using Loaded = Result<void, EngineError>;
    return post<Loaded>([this, modelFile] { return m_core->load(modelFile); },
                        failure(EngineError::modelLoadFailed(modelFile)));
}

QFuture<void> WhisperEngine::unload()
{
    return QFuture<void>(post<bool>(
        [this] {
            m_core->unload();
            return true;
        },
        false));
}

QFuture<Result<QString, EngineError>> WhisperEngine::transcribe(std::vector<float> samples,
                                                                const TranscriptionOptions& options)
{
    using Text = Result<QString, EngineError>;
    // Shared, because a posted job must be copyable and the samples should not be copied.
    const auto take = std::make_shared<std::vector<float>>(std::move(samples));
    return post<Text>([this, take, options] { return m_core->transcribe(std::move(*take), options); },
                      failure(EngineError::noModelLoaded()));
}

QFuture<Result<QString, EngineError>>
WhisperEngine::transcribe(std::shared_ptr<const std::vector<float>> samples,
                          const TranscriptionOptions& options)
{
    using Text = Result<QString, EngineError>;
    return post<Text>(
        [this, take = std::move(samples), options] { return m_core->transcribe(*take, options); },
        failure(EngineError::noModelLoaded()));
}

QFuture<QString> WhisperEngine::settledModel()
{
    return post<QString>([this] { return m_core->loadedModel(); }, QString());
}

void WhisperEngine::publishState()
{
    const QMutexLocker lock(&m_mutex);
    m_loadedModel = m_core->loadedModel();
    m_lastLanguage = m_core->lastLanguage();
}

QString WhisperEngine::loadedModel() const
{
    const QMutexLocker lock(&m_mutex);
    return m_loadedModel;
}

QString WhisperEngine::lastLanguage() const
{
    const QMutexLocker lock(&m_mutex);
    return m_lastLanguage;
}

} // namespace tulvane
