#include <app/cli/RecognitionOutput.h>
#include <app/cli/TimedRecognizer.h>

#include <QCoroFuture>
#include <QCoroTask>

namespace tulvane::cli {

namespace {

/// A future that ends with the given one, after `note` has seen the result on the main thread.
template <class T, class Note>
QCoro::Task<> passOn(QFuture<T> work, QPromise<T> promise, Note note)
{
    promise.start();
    const T result = co_await work;
    note(result);
    promise.addResult(result);
    promise.finish();
}

} // namespace

QFuture<QString> TimedRecognizer::loadedModel()
{
    return m_recognizer.loadedModel();
}

QFuture<Recognizer::Loaded> TimedRecognizer::load(const QString& file)
{
    QElapsedTimer timer;
    timer.start();
    QPromise<Loaded> promise;
    auto future = promise.future();
    static_cast<void>(passOn(m_recognizer.load(file), std::move(promise),
                             [this, timer](const auto&) { m_loadSeconds += secondsOf(timer); }));
    return future;
}

QFuture<Recognizer::Recognised> TimedRecognizer::transcribe(Samples samples,
                                                            const TranscriptionOptions& options)
{
    QElapsedTimer timer;
    timer.start();
    QPromise<Recognised> promise;
    auto future = promise.future();
    static_cast<void>(passOn(m_recognizer.transcribe(std::move(samples), options), std::move(promise),
                             [this, timer](const Recognised& recognised) {
                                 m_last = recognised.value_or(RecognisedText());
                                 m_transcribeSeconds = secondsOf(timer);
                             }));
    return future;
}

} // namespace tulvane::cli
