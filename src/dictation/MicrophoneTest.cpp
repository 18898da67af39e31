#include <dictation/MicrophoneTest.h>
#include <ports/AudioEngine.h>
#include <ports/AudioInput.h>

#include <algorithm>
#include <utility>

namespace tulvane {

MicrophoneTest::MicrophoneTest(AudioInput& input, const Clock& clock, Scheduler& scheduler, QObject* parent)
    : QObject(parent),
      m_input(input),
      m_scheduler(scheduler),
      m_recorder(input, clock)
{
    connect(&m_recorder, &AudioRecorder::levelChanged, this, [this](float level) {
        m_loudest = std::max(m_loudest, level);
        Q_EMIT levelChanged(level);
    });
    m_recorder.setEngineConfigurationChanged([this] { stop(); });
    m_recorder.setInputStalled([this] { stop(); });
}

MicrophoneTest::~MicrophoneTest()
{
    static_cast<void>(m_recorder.stop());
}

void MicrophoneTest::start()
{
    if (isRunning())
        return;
    m_loudest = 0;
    if (const auto started = m_recorder.start(); !started) {
        conclude(Answer::failed, started.error().description());
        return;
    }
    m_end = m_scheduler.after(length, [this] { stop(); });
    conclude(Answer::none);
}

void MicrophoneTest::stop()
{
    if (!isRunning())
        return;
    m_end.reset();
    static_cast<void>(m_recorder.stop());
    conclude(m_loudest >= audible ? Answer::heard : Answer::silent);
}

QString MicrophoneTest::deviceName() const
{
    return m_input.makeEngine()->deviceName();
}

void MicrophoneTest::conclude(Answer answer, const QString& failure)
{
    m_answer = answer;
    m_failure = failure;
    Q_EMIT changed();
}

} // namespace tulvane
