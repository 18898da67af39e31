#include <dictation/EngineRecognizer.h>
#include <speech/whisper/WhisperEngine.h>

namespace tulvane {

QFuture<QString> EngineRecognizer::loadedModel()
{
    return m_engine.settledModel();
}

QFuture<Result<void, EngineError>> EngineRecognizer::load(const QString& file)
{
    return m_engine.load(file);
}

QFuture<Result<QString, EngineError>> EngineRecognizer::transcribe(Samples samples,
                                                                   const TranscriptionOptions& options)
{
    return m_engine.transcribe(std::move(samples), options);
}

} // namespace tulvane
