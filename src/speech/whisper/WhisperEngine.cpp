#include <speech/WorkerStack.h>
#include <speech/whisper/BackendLoader.h>
#include <speech/whisper/EngineCore.h>
#include <speech/whisper/LibraryLog.h>
#include <speech/whisper/WhisperEngine.h>

#include <QMetaObject>
#include <QPromise>

#include <utility>

namespace tulvane {

namespace {

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
    : WhisperEngine(backendFolder, memory, [](auto processor) { return processor; })
{
}

WhisperEngine::WhisperEngine(const QString& backendFolder, const SystemMemory& memory,
                             const MakeRunner& makeRunner)
{
    prepareProcessOnce();
    m_thread.setObjectName(QStringLiteral("whisper"));
    m_thread.setStackSize(workerStack);
    m_worker.moveToThread(&m_thread);
    m_thread.start();
    QMetaObject::invokeMethod(
        &m_worker,
        [this, backendFolder, &memory, makeRunner] {
            m_core = makeRunner(std::make_unique<EngineCore>(backendFolder, memory, m_closing));
        },
        Qt::QueuedConnection);
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
            promise->addResult(m_closing ? refusal : job());
            promise->finish();
        },
        Qt::QueuedConnection);
    return promise->future();
}

QFuture<QString> WhisperEngine::loadedModel()
{
    return post<QString>([this] { return m_core->loadedModel(); }, QString());
}

QFuture<Recognizer::Loaded> WhisperEngine::load(const QString& file)
{
    return post<Loaded>([this, file] { return m_core->load(file); },
                        failure(EngineError::modelLoadFailed(file)));
}

QFuture<Recognizer::Recognised> WhisperEngine::transcribe(Samples samples,
                                                          const TranscriptionOptions& options)
{
    return post<Recognised>(
        [this, take = std::move(samples), options] { return m_core->transcribe(*take, options); },
        failure(EngineError::noModelLoaded()));
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

} // namespace tulvane
