#include <base/Translate.h>
#include <dictation/Demonstration.h>
#include <ports/Sounds.h>
#include <settings/AppSettings.h>
#include <speech/CleanTranscript.h>

#include <QCoroFuture>

namespace tulvane {

Demonstration::Demonstration(const Dependencies& needed, QObject* parent)
    : QObject(parent),
      m_needed(needed),
      m_delays(needed.scheduler)
{
}

Demonstration::~Demonstration()
{
    m_lifetime.end();
    m_delays.notifyAll();
}

void Demonstration::start()
{
    if (m_state == State::running)
        return;
    Recognizer::Samples speech = m_needed.speech(m_needed.settings.appLanguage());
    if (!speech || speech->empty()) {
        set(State::failed, {}, translate("The recorded voice is missing."));
        return;
    }
    set(State::running, {}, {});
    static_cast<void>(run(std::move(speech)));
}

QCoro::Task<> Demonstration::run(Recognizer::Samples speech)
{
    constexpr qint64 samplesPerMillisecond = 16;
    const Lifetime::Guard self = m_lifetime.guard();
    m_needed.sounds.playSpeech(speech);
    const auto voice = m_delays.limit(
        std::chrono::milliseconds(static_cast<qint64>(speech->size()) / samplesPerMillisecond));
    const Result<QString, QString> text = co_await recognise(std::move(speech));
    while (self && !voice->isOver())
        co_await m_delays.next();
    if (!self)
        co_return;
    if (text)
        set(State::done, *text, {});
    else
        set(State::failed, {}, text.error());
}

QCoro::Task<Result<QString, QString>> Demonstration::recognise(Recognizer::Samples speech)
{
    const Lifetime::Guard self = m_lifetime.guard();
    const Recognizer::Loaded loaded = co_await m_needed.engine.load(m_needed.modelFile);
    if (!self)
        co_return QString();
    if (!loaded)
        co_return tulvane::failure(loaded.error().description());
    TranscriptionOptions options;
    options.language = rawValue(TranscriptionLanguage::automatic);
    options.threadCount = m_needed.threadCount;
    const Recognizer::Recognised recognised = co_await m_needed.engine.transcribe(std::move(speech), options);
    if (!recognised)
        co_return tulvane::failure(recognised.error().description());
    co_return cleanTranscript(recognised->text, {.autoCapitalize = true, .appendTrailingSpace = false});
}

void Demonstration::set(State state, const QString& text, const QString& failure)
{
    m_state = state;
    m_text = text;
    m_failure = failure;
    Q_EMIT changed();
}

} // namespace tulvane
