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

} // namespace

void EngineCore::Free::operator()(whisper_context* context) const
{
    whisper_free(context);
}

EngineCore::EngineCore(const QString& backendFolder, const SystemMemory& memory)
    : m_backendFolder(backendFolder),
      m_memory(memory)
{
}

EngineCore::~EngineCore() = default;

Result<void, EngineError> EngineCore::load(const QString& modelFile)
{
    if (m_context && m_loadedModel == modelFile)
        return {};
    unload();
    QElapsedTimer timer;
    timer.start();
    m_context.reset(open(modelFile));
    LibraryLog::ofThisThread().flush();
    if (!m_context)
        return failure(EngineError::modelLoadFailed(modelFile));
    m_loadedModel = modelFile;
    qCInfo(lcWhisper).noquote().nospace()
        << "Loaded " << QFileInfo(modelFile).fileName() << " in " << secondsOf(timer) << 's';
    return {};
}

/// The library's context for a file that is a sound model and fits into memory; null otherwise, with the
/// reason in the log.
whisper_context* EngineCore::open(const QString& modelFile) const
{
    const auto file = openModelFile(modelFile);
    if (!file) {
        qCWarning(lcWhisper).noquote() << "Could not open the model" << modelFile << "-" << file.error();
        return nullptr;
    }
    const auto facts = checkModelFile(**file);
    if (!facts) {
        qCWarning(lcWhisper).noquote()
            << "The model" << modelFile << "is damaged or foreign:" << facts.error();
        return nullptr;
    }
    if (!loadBackends(m_backendFolder)) {
        qCWarning(lcWhisper).noquote() << "No computing backend was found in" << m_backendFolder;
        return nullptr;
    }
    return hasMemoryFor(facts->neededMemory(), facts->neededAddressSpace()) ? loadModel(**file) : nullptr;
}

/// Asked before the library is, which ends the process when an allocation fails.
bool EngineCore::hasMemoryFor(qint64 bytes, qint64 addressSpace) const
{
    const qint64 available = m_memory.available();
    if (bytes <= available && m_memory.canReserve(addressSpace))
        return true;
    qCWarning(lcWhisper).nospace() << "This needs " << bytes / 1'000'000 << " MB of memory, and "
                                   << available / 1'000'000 << " MB are available";
    return false;
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

Result<QString, EngineError> EngineCore::transcribe(std::vector<float> samples,
                                                    const TranscriptionOptions& options)
{
    if (!m_context)
        return failure(EngineError::noModelLoaded());
    const int count = librarySampleCount(samples.size());
    const auto parameters = WhisperParameters::from(options);
    if (!parameters)
        return failure(parameters.error());
    if (!knowsLanguage(*parameters))
        return failure(EngineError::transcriptionFailed(EngineError::unknownLanguage));
    prepareSamples(samples);
    const qint64 memory = workingMemory(samples.size());
    if (!hasMemoryFor(memory, memory + parameters->forLibrary().n_threads * threadSpace))
        return failure(EngineError::transcriptionFailed(EngineError::notEnoughMemory));

    QElapsedTimer timer;
    timer.start();
    const qint32 code = run(*parameters, samples);
    LibraryLog::ofThisThread().flush();
    if (code != 0)
        return failure(EngineError::transcriptionFailed(code));
    const QString text = joinedSegments();
    m_lastLanguage = QString::fromUtf8(whisper_is_multilingual(m_context.get()) != 0
                                           ? whisper_lang_str(whisper_full_lang_id(m_context.get()))
                                           : "en");
    qCInfo(lcWhisper).noquote().nospace() << "Transcribed " << seconds(count / double{samplesPerSecond}, 1)
                                          << "s of audio in " << secondsOf(timer) << 's';
    return text;
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
    try {
        code = whisper_full(m_context.get(), parameters.forLibrary(), samples.data(),
                            librarySampleCount(samples.size()));
    } catch (const std::exception& exception) {
        qCCritical(lcWhisper) << "The library failed to transcribe:" << exception.what();
    } catch (...) {
        qCCritical(lcWhisper) << "The library failed to transcribe";
    }
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

} // namespace tulvane
