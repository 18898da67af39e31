#pragma once

#include <audio/AudioRecorder.h>
#include <base/Scheduler.h>

#include <QObject>
#include <QString>

#include <chrono>
#include <memory>

namespace tulvane {

/// Shows the user for three seconds that the microphone works: its level, and nothing else. What is captured
/// meanwhile is thrown away; no recogniser gets it. A microphone of its own, so that a dictation that begins
/// meanwhile has all of its own sound. Main thread.
class MicrophoneTest final : public QObject {
    Q_OBJECT

public:
    static constexpr std::chrono::milliseconds length{3000};
    /// From this level on, 0 to 1, something was heard.
    static constexpr float audible = 0.05F;

    /// What the last test came to.
    enum class Answer { none, heard, silent, failed };

    /// All collaborators outlive this object.
    MicrophoneTest(AudioInput& input, const Clock& clock, Scheduler& scheduler, QObject* parent = nullptr);
    Q_DISABLE_COPY_MOVE(MicrophoneTest)
    ~MicrophoneTest() override;

    /// Begins one; nothing while one is under way. Blocks until the microphone is open, 250 ms at most.
    void start();
    /// Ends it, as at the end of its time.
    void stop();

    [[nodiscard]] bool isRunning() const { return m_recorder.isRecording(); }
    /// 0 to 1; 0 while none is under way.
    [[nodiscard]] float level() const { return m_recorder.level(); }
    [[nodiscard]] Answer answer() const { return m_answer; }
    /// Why there was no test, for the user; empty but after a failure.
    [[nodiscard]] const QString& failure() const { return m_failure; }
    /// The default microphone's name as its owner knows it; empty without one. Asks the sound system.
    [[nodiscard]] QString deviceName() const;

Q_SIGNALS:
    void changed();
    void levelChanged(float level);

private:
    void conclude(Answer answer, const QString& failure = {});

    AudioInput& m_input;
    Scheduler& m_scheduler;
    AudioRecorder m_recorder;
    float m_loudest = 0;
    Answer m_answer = Answer::none;
    QString m_failure;
    std::unique_ptr<Scheduler::Token> m_end;
};

} // namespace tulvane
