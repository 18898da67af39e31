#include <base/Log.h>
#include <speech/whisper/BackendLoader.h>
#include <speech/whisper/EngineCore.h>
#include <speech/whisper/LibraryLog.h>
#include <speech/whisper/ModelFile.h>
#include <speech/whisper/ModelFileCheck.h>
#include <speech/whisper/ModelLoader.h>
#include <speech/whisper/SamplePreparation.h>
#include <speech/whisper/WhisperParameters.h>

#include <QElapsedTimer>
#include <QFileInfo>

#include <whisper.h>

#include <exception>

namespace tulvane {

namespace {

// After this code the library has freed its own state and would free it again.
constexpr qint32 stateIsGone = -7;
// Address space, not memory, that each thread takes besides what it uses: its stack, and what the allocator
// sets aside for it.
constexpr qint64 threadSpace = 80'000'000;
// Vocabulary entries of a multilingual model that stand for no language.
constexpr int notLanguages = 51'766;

QString seconds(double value, int decimals)
{
    return QString::number(value, 'f', decimals);
}

/// What a transcription of so many samples takes for a while: two copies of them, a spectrogram of 128 bands
/// and two directions, and room for all that does not depend on them.
qint64 workingMemory(std::size_t samples)
{
    constexpr qint64 samplesPerFrame = 160;
    const auto count = static_cast<qint64>(samples);
    return 64'000'000 + 2 * 4 * count + 2 * 4 * 128 * (count / samplesPerFrame);
}

QString secondsOf(const QElapsedTimer& timer)
{
    return seconds(static_cast<double>(timer.nsecsElapsed()) / 1e9, 2);
}

/// The library calls back before each window and at each word.
void reportProgress(whisper_full_params& params, std::function<void()>& progress)
{
    params.encoder_begin_callback = [](whisper_context*, whisper_state*, void* data) {
        (*static_cast<std::function<void()>*>(data))();
        return true;
    };
    params.encoder_begin_callback_user_data = &progress;
    params.logits_filter_callback = [](whisper_context*, whisper_state*, const whisper_token_data*, int,
                                       float*,
                                       void* data) { (*static_cast<std::function<void()>*>(data))(); };
    params.logits_filter_callback_user_data = &progress;
}

/// What the library said first of that which it has just refused.
EngineObstacle refusal()
{
    const QString said = LibraryLog::ofThisThread().firstError();
    return {said.isEmpty() ? EngineObstacle::Kind::unknown : EngineObstacle::Kind::library, said};
}

} // namespace

void EngineCore::Free::operator()(whisper_context* context) const
{
    whisper_free(context);
}

EngineCore::EngineCore(const QString& backendFolder, const SystemMemory& memory,
                       const std::atomic<bool>& closing)
    : m_backendFolder(backendFolder),
      m_memory(memory),
      m_closing(closing)
{
}

EngineCore::~EngineCore() = default;

Recognizer::Loaded EngineCore::load(const QString& modelFile)
{
    if (m_context && m_loadedModel == modelFile)
        return {};
    unload();
    QElapsedTimer timer;
    timer.start();
    const auto opened = open(modelFile);
    if (!opened)
        return failure(EngineError::modelLoadFailed(modelFile, opened.error()));
    m_context.reset(*opened);
    m_loadedModel = modelFile;
    qCInfo(lcWhisper).noquote().nospace()
        << "Loaded " << QFileInfo(modelFile).fileName() << " in " << secondsOf(timer) << 's';
    return {};
}

/// The library's context for a file that is a sound model and fits into memory. A failure is in the log.
Result<whisper_context*, EngineObstacle> EngineCore::open(const QString& modelFile) const
{
    const auto file = openModelFile(modelFile);
    if (!file) {
        qCCritical(lcWhisper).noquote() << "Could not open the model" << modelFile << "-" << file.error();
        return failure(EngineObstacle{EngineObstacle::Kind::unreadable, file.error()});
    }
    const auto facts = checkModelFile(**file);
    if (!facts) {
        qCCritical(lcWhisper).noquote()
            << "The model" << modelFile << "is damaged or foreign:" << facts.error();
        return failure(EngineObstacle{EngineObstacle::Kind::damaged, facts.error()});
    }
    if (!loadBackends(m_backendFolder)) {
        qCCritical(lcWhisper).noquote() << "No computing backend was found in" << m_backendFolder;
        return failure(EngineObstacle{EngineObstacle::Kind::noBackend, m_backendFolder});
    }
    if (!m_isOnDevice) {
        if (auto enough = checkMemory(facts->neededMemory(), facts->neededAddressSpace()); !enough)
            return failure(enough.error());
    }
    LibraryLog::ofThisThread().clearFirstError();
    whisper_context* const context = loadModel(**file, m_closing, m_progress);
    LibraryLog::ofThisThread().flush();
    if (context == nullptr)
        return failure(refusal());
    return context;
}

/// Asked before the library is, which ends the process when an allocation fails.
Result<void, EngineObstacle> EngineCore::checkMemory(qint64 bytes, qint64 addressSpace) const
{
    const qint64 available = m_memory.available();
    if (bytes <= available && m_memory.canReserve(addressSpace))
        return {};
    qCCritical(lcWhisper).nospace() << "This needs " << bytes / 1'000'000 << " MB of memory, and "
                                    << available / 1'000'000 << " MB are available";
    return failure(EngineObstacle{.kind = EngineObstacle::Kind::memory,
                                  .detail = {},
                                  .neededBytes = bytes,
                                  .availableBytes = available});
}

void EngineCore::unload()
{
    if (m_context) {
        m_context.reset();
        LibraryLog::ofThisThread().flush();
        qCInfo(lcWhisper) << "Unloaded model";
    }
    m_loadedModel.clear();
}

Recognizer::Recognised EngineCore::transcribe(const std::vector<float>& take,
                                              const TranscriptionOptions& options)
{
    if (!m_context)
        return failure(EngineError::noModelLoaded());
    const int count = librarySampleCount(take.size());
    const auto parameters = WhisperParameters::from(options);
    if (!parameters)
        return failure(parameters.error());
    if (!knowsLanguage(*parameters))
        return failure(EngineError::transcriptionFailed(
            EngineError::unknownLanguage, {EngineObstacle::Kind::unknownLanguage, options.language}));
    std::vector<float> samples = take;
    prepareSamples(samples);
    const qint64 memory = workingMemory(samples.size());
    if (auto enough = checkMemory(memory, memory + parameters->forLibrary().n_threads * threadSpace); !enough)
        return failure(EngineError::transcriptionFailed(EngineError::notEnoughMemory, enough.error()));

    QElapsedTimer timer;
    timer.start();
    if (const qint32 code = run(*parameters, samples); code != 0) {
        qCCritical(lcWhisper) << "The library ended a transcription with the code" << code;
        return failure(EngineError::transcriptionFailed(code, refusal()));
    }
    RecognisedText recognised{.text = joinedSegments(), .language = usedLanguage()};
    qCInfo(lcWhisper).noquote().nospace() << "Transcribed " << seconds(count / double{samplesPerSecond}, 1)
                                          << "s of audio in " << secondsOf(timer) << 's';
    return recognised;
}

/// An unknown language would be taken for some other token, and the text be some text.
bool EngineCore::knowsLanguage(const WhisperParameters& parameters) const
{
    const QByteArray& language = parameters.language();
    if (language.isEmpty() || language == "auto")
        return true;
    const int id = whisper_lang_id(language.constData());
    const int known = whisper_is_multilingual(m_context.get()) != 0
                          ? whisper_n_vocab(m_context.get()) - notLanguages
                          : whisper_lang_max_id() + 1;
    return id >= 0 && id < known;
}

qint32 EngineCore::run(const WhisperParameters& parameters, const std::vector<float>& samples)
{
    qint32 code = EngineError::libraryThrew;
    LibraryLog::ofThisThread().clearFirstError();
    try {
        whisper_full_params params = parameters.forLibrary();
        if (m_progress)
            reportProgress(params, m_progress);
        code = whisper_full(m_context.get(), params, samples.data(), librarySampleCount(samples.size()));
    } catch (const std::exception& exception) {
        qCCritical(lcWhisper) << "The library failed to transcribe:" << exception.what();
    } catch (...) {
        qCCritical(lcWhisper) << "The library failed to transcribe";
    }
    LibraryLog::ofThisThread().flush();
    if (code == stateIsGone) {
        [[maybe_unused]] whisper_context* const abandoned = m_context.release();
        m_loadedModel.clear();
        qCCritical(lcWhisper) << "The model was given up, because the library ran out of memory";
    }
    return code;
}

/// A character may begin in one segment and end in the next, so the bytes are joined before they are read.
QString EngineCore::joinedSegments() const
{
    QByteArray joined;
    const int count = whisper_full_n_segments(m_context.get());
    for (int i = 0; i < count; ++i) {
        if (const char* const text = whisper_full_get_segment_text(m_context.get(), i))
            joined += text;
    }
    return QString::fromUtf8(joined);
}

QString EngineCore::usedLanguage() const
{
    return QString::fromUtf8(whisper_is_multilingual(m_context.get()) != 0
                                 ? whisper_lang_str(whisper_full_lang_id(m_context.get()))
                                 : "en");
}

} // namespace tulvane
