#include <speech/ConfinedRunner.h>
#include <speech/WorkerStack.h>

#include <QMetaObject>

#include <optional>

namespace tulvane {

ConfinedRunner::ConfinedRunner(std::unique_ptr<ModelRunner> inner, const std::function<void()>& confine)
    : m_inner(std::move(inner))
{
    m_thread.setObjectName(QStringLiteral("whisper-model"));
    m_thread.setStackSize(workerStack);
    m_worker.moveToThread(&m_thread);
    m_thread.start();
    QMetaObject::invokeMethod(&m_worker, confine, Qt::QueuedConnection);
}

ConfinedRunner::~ConfinedRunner()
{
    QMetaObject::invokeMethod(
        &m_worker,
        [this] {
            m_inner.reset();
            m_thread.quit();
        },
        Qt::QueuedConnection);
    m_thread.wait();
}

template <class Work>
auto ConfinedRunner::onThread(const Work& work) const
{
    std::optional<decltype(work())> result;
    QMetaObject::invokeMethod(&m_worker, [&] { result.emplace(work()); }, Qt::BlockingQueuedConnection);
    return std::move(*result);
}

Recognizer::Loaded ConfinedRunner::load(const QString& modelFile)
{
    return onThread([&] { return m_inner->load(modelFile); });
}

void ConfinedRunner::unload()
{
    QMetaObject::invokeMethod(&m_worker, [this] { m_inner->unload(); }, Qt::BlockingQueuedConnection);
}

Recognizer::Recognised ConfinedRunner::transcribe(const std::vector<float>& samples,
                                                  const TranscriptionOptions& options)
{
    return onThread([&] { return m_inner->transcribe(samples, options); });
}

QString ConfinedRunner::loadedModel() const
{
    return onThread([&] { return m_inner->loadedModel(); });
}

} // namespace tulvane
