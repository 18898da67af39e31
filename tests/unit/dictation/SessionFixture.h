#pragma once

#include <audio/AudioRecorder.h>
#include <dictation/DictationSession.h>
#include <dictation/ModelSource.h>
#include <platform/fake/FakeAudioInput.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>
#include <stats/StatsStore.h>
#include <support/Await.h>
#include <support/FakeClock.h>
#include <support/FakeRecognizer.h>
#include <support/FakeScheduler.h>
#include <support/LogCapture.h>
#include <support/ScratchFolder.h>

#include <QCoroTask>

#include <gtest/gtest.h>

namespace tulvane::test {

/// A model source under a script.
class FakeModelSource final : public ModelSource {
public:
    [[nodiscard]] std::optional<QString> readyFile() const override { return file; }
    void become(std::optional<QString> readyFile)
    {
        file = std::move(readyFile);
        Q_EMIT statesChanged();
    }
    std::optional<QString> file = QStringLiteral("/models/medium.bin");
};

/// A session over a scripted microphone and recogniser, with time held still.
class SessionFixture : public ::testing::Test {
protected:
    using State = DictationSession::State;

    void SetUp() override { makeSession(); }

    void makeSession()
    {
        input.setFormat({.sampleRate = 16000, .channels = 1});
        session = std::make_unique<DictationSession>(DictationSession::Dependencies{
            .settings = settings,
            .recorder = recorder,
            .models = models,
            .engine = engine,
            .stats = stats,
            .scheduler = scheduler,
            .clock = clock,
            .isMicrophoneAuthorized = [this] { return isMicrophoneAuthorized; },
            .threadCount = 3,
            .figures = figures});
    }

    /// Lets what was posted happen.
    static void settle()
    {
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
    }

    /// Starts a recording and hears so many samples of this level.
    void record(std::size_t samples, float level = 0.5F)
    {
        const auto started = session->start();
        ASSERT_TRUE(started) << qPrintable(started.error().description());
        if (samples > 0) {
            ASSERT_TRUE(input.push(std::vector<float>(samples, level)));
        }
    }

    /// A whole dictation, waited for.
    Result<Outcome, DictationError> dictate(std::size_t samples = 16000, float level = 0.5F)
    {
        record(samples, level);
        return finish(session->stop());
    }

    Result<Outcome, DictationError> finish(const StopResult& stopped)
    {
        return QCoro::waitFor(session->finish(stopped));
    }

    /// Runs a finish without waiting; its result lands in `finished`.
    QCoro::Task<> begin(StopResult stopped) { finished = co_await session->finish(std::move(stopped)); }

    ScratchFolder folder;
    LogCapture log;
    FakeUserDefaults defaults;
    AppSettings settings{defaults};
    FakeClock clock;
    FakeScheduler scheduler{&clock};
    FakeAudioInput input;
    AudioRecorder recorder{input, clock};
    FakeModelSource models;
    FakeRecognizer engine;
    StatsStore stats{folder.file(QStringLiteral("statistics.json"))};
    bool isMicrophoneAuthorized = true;
    ModelFigures* figures = nullptr;
    std::unique_ptr<DictationSession> session;
    std::optional<Result<Outcome, DictationError>> finished;
};

} // namespace tulvane::test
