#include <speech/whisper/PromptLimit.h>
#include <speech/whisper/WhisperParameters.h>

#include <ggml.h>

#include <algorithm>
#include <limits>

namespace tulvane {

namespace {

int libraryThreadCount(qint64 count)
{
    if (count > std::numeric_limits<qint32>::max() || count < std::numeric_limits<qint32>::min())
        qFatal("the thread count does not fit in 32 bits");
    return static_cast<int>(std::clamp<qint64>(count, 1, GGML_MAX_N_THREADS));
}

/// The prompt as the library gets it: trimmed, without the character that would end a C string early.
QByteArray libraryPrompt(QString prompt)
{
    return limitedPrompt(prompt.remove(QChar::Null).trimmed().toUtf8());
}

} // namespace

Result<WhisperParameters, EngineError> WhisperParameters::from(const TranscriptionOptions& options)
{
    if (options.language.contains(QChar::Null))
        return failure(EngineError::transcriptionFailed(EngineError::textNotCopied));
    WhisperParameters parameters;
    parameters.m_threadCount = libraryThreadCount(options.threadCount);
    parameters.m_translate = options.translate;
    parameters.m_initialPrompt = libraryPrompt(options.initialPrompt.value_or(QString()));
    parameters.m_language = options.language.toUtf8();
    return parameters;
}

whisper_full_params WhisperParameters::forLibrary() const
{
    whisper_full_params params = whisper_full_default_params(WHISPER_SAMPLING_GREEDY);
    params.n_threads = m_threadCount;
    params.offset_ms = 0;
    params.translate = m_translate;
    params.no_context = true;
    params.no_timestamps = true;
    params.single_segment = false;
    params.print_special = false;
    params.print_progress = false;
    params.print_realtime = false;
    params.print_timestamps = false;
    if (!m_initialPrompt.isEmpty())
        params.initial_prompt = m_initialPrompt.constData();
    params.language = m_language.constData();
    params.detect_language = false;
    params.suppress_blank = true;
    params.suppress_nst = true;
    // The usual default, written out because falling back over rising temperatures is what ends repetitions.
    params.temperature_inc = 0.2F;
    return params;
}

} // namespace tulvane
