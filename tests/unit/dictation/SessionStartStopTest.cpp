#include "SessionFixture.h"

using namespace std::chrono_literals;

namespace tulvane::test {

class SessionStartStop : public SessionFixture {};

TEST_F(SessionStartStop, StartsIdleAndEmpty)
{
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_TRUE(session->lastTranscript().isEmpty());
    EXPECT_TRUE(session->history().isEmpty());
    EXPECT_FALSE(session->canRetry());
}

TEST_F(SessionStartStop, WithoutMicrophonePermissionNothingStarts)
{
    isMicrophoneAuthorized = false;
    models.file.reset();
    const auto started = session->start();
    ASSERT_FALSE(started);
    EXPECT_TRUE(started.error().is(SessionError::microphonePermission));
    EXPECT_EQ(started.error().description(), QStringLiteral("Microphone access is required."));
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_EQ(input.enginesMade(), 0);
}

TEST_F(SessionStartStop, WithoutTheModelNothingStarts)
{
    models.file.reset();
    const auto started = session->start();
    ASSERT_FALSE(started);
    EXPECT_TRUE(started.error().is(SessionError::modelNotDownloaded));
    EXPECT_EQ(started.error().description(), QStringLiteral("The speech model has not been downloaded yet."));
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_EQ(input.enginesMade(), 0);
}

TEST_F(SessionStartStop, ARecordersErrorIsPassedOnUnchanged)
{
    input.setFormat({});
    const auto started = session->start();
    ASSERT_FALSE(started);
    EXPECT_EQ(started.error().description(), RecorderError::noInputDevice().description());
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_TRUE(scheduler.pending().empty());
}

TEST_F(SessionStartStop, TheThirdErrorHasItsText)
{
    EXPECT_EQ(description(SessionError::notRecording), QStringLiteral("No recording is in progress."));
}

TEST_F(SessionStartStop, RecordsOnceHoweverOftenItIsStarted)
{
    record(16000);
    EXPECT_EQ(session->state(), State::recording);
    EXPECT_TRUE(session->start());
    EXPECT_EQ(input.enginesMade(), 1);
    EXPECT_EQ(scheduler.pending().size(), 1U);
    const StopResult stopped = session->stop();
    ASSERT_TRUE(std::holds_alternative<RecordedAudio>(stopped));
    EXPECT_EQ(std::get<RecordedAudio>(stopped).samples->size(), 16000U);
    EXPECT_DOUBLE_EQ(std::get<RecordedAudio>(stopped).seconds, 1.0);
    EXPECT_EQ(session->state(), State::transcribing);
}

TEST_F(SessionStartStop, StartDoesNothingWhileTranscribing)
{
    record(16000);
    static_cast<void>(session->stop());
    EXPECT_TRUE(session->start());
    EXPECT_EQ(session->state(), State::transcribing);
    EXPECT_EQ(input.enginesMade(), 1);
}

TEST_F(SessionStartStop, StopWithoutARecordingHeardNothingAndChangesNothing)
{
    EXPECT_EQ(std::get<Outcome>(session->stop()), Outcome::nothingHeard());
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionStartStop, JustUnderTwoFifthsOfASecondIsTooShort)
{
    record(6399);
    EXPECT_EQ(std::get<Outcome>(session->stop()), Outcome::tooShort());
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionStartStop, TwoFifthsOfASecondIsLongEnough)
{
    record(6400);
    EXPECT_TRUE(std::holds_alternative<RecordedAudio>(session->stop()));
}

TEST_F(SessionStartStop, ShortnessIsJudgedBeforeSilence)
{
    record(100, 0.0F);
    EXPECT_EQ(std::get<Outcome>(session->stop()), Outcome::tooShort());
}

TEST_F(SessionStartStop, APeakAtTheThresholdIsNothingHeard)
{
    // 20 log10(x) = -50; the nearest float lies a little above or below, the one below is taken.
    record(16000, std::nextafter(0.0031622776F, 0.0F));
    EXPECT_EQ(std::get<Outcome>(session->stop()), Outcome::nothingHeard());
    EXPECT_EQ(session->state(), State::idle);
}

TEST_F(SessionStartStop, APeakAboveTheThresholdIsHeard)
{
    record(16000, 0.0032F);
    EXPECT_TRUE(std::holds_alternative<RecordedAudio>(session->stop()));
}

TEST_F(SessionStartStop, TheLongestDurationIsTheSettingButAtLeastTenSeconds)
{
    settings.maxRecordingSeconds.set(5);
    record(16000);
    EXPECT_EQ(scheduler.pending(), std::vector{std::chrono::milliseconds(10s)});
    session->cancel();
    settings.maxRecordingSeconds.set(300);
    record(16000);
    EXPECT_EQ(scheduler.pending(), std::vector{std::chrono::milliseconds(300s)});
    session->cancel();
    settings.maxRecordingSeconds.set(-7);
    record(16000);
    EXPECT_EQ(scheduler.pending(), std::vector{std::chrono::milliseconds(10s)});
    for (const qint64 huge : {qint64{2147484}, qint64{4294968}, std::numeric_limits<qint64>::max()}) {
        session->cancel();
        settings.maxRecordingSeconds.set(huge);
        record(16000);
        EXPECT_EQ(scheduler.pending(), std::vector{std::chrono::milliseconds(2147483s)}) << huge;
    }
}

TEST_F(SessionStartStop, TheLongestDurationIsReportedAndTheRecordingStillRuns)
{
    int reached = 0;
    session->onMaxDurationReached = [&] { ++reached; };
    record(16000);
    scheduler.advance(299999ms);
    EXPECT_EQ(reached, 0);
    scheduler.advance(1ms);
    EXPECT_EQ(reached, 1);
    EXPECT_EQ(session->state(), State::recording);
    EXPECT_TRUE(log.texts("app", QtInfoMsg).contains(QStringLiteral("Max recording length reached")));
    scheduler.advance(600s);
    EXPECT_EQ(reached, 1);
}

TEST_F(SessionStartStop, StoppingOrCancellingEndsTheTimer)
{
    int reached = 0;
    session->onMaxDurationReached = [&] { ++reached; };
    record(16000);
    static_cast<void>(session->stop());
    EXPECT_TRUE(scheduler.pending().empty());
    scheduler.advance(400s);
    EXPECT_EQ(reached, 0);
}

TEST_F(SessionStartStop, CancelDiscardsEverything)
{
    record(16000);
    session->cancel();
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_FALSE(input.isOpen());
    EXPECT_TRUE(scheduler.pending().empty());
    EXPECT_TRUE(session->history().isEmpty());
    EXPECT_TRUE(stats.days().isEmpty());
    EXPECT_TRUE(engine.transcriptions.size() <= 1) << "only the warm-up";
    record(0);
    EXPECT_EQ(std::get<Outcome>(session->stop()), Outcome::tooShort()) << "nothing of the first one is left";
}

TEST_F(SessionStartStop, CancelWhileTranscribingInterruptsNothing)
{
    record(16000);
    const StopResult stopped = session->stop();
    session->cancel();
    EXPECT_EQ(session->state(), State::transcribing);
    EXPECT_EQ(finish(stopped)->kind, Outcome::Kind::transcript);
}

TEST_F(SessionStartStop, AChangedMicrophoneCancelsTheRecordingAndIsReported)
{
    int interrupted = 0;
    session->onRecordingInterrupted = [&] {
        EXPECT_EQ(session->state(), State::idle);
        ++interrupted;
    };
    record(16000);
    input.changeConfiguration();
    ASSERT_TRUE(waitUntil([&] { return interrupted > 0; }));
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_FALSE(input.isOpen());
    EXPECT_TRUE(scheduler.pending().empty());
    EXPECT_EQ(interrupted, 1);
}

TEST_F(SessionStartStop, WhatBefallsTheRecorderOutsideOfADictationIsNotReported)
{
    session->onRecordingInterrupted = [] { FAIL(); };
    session->onInputStalled = [] { FAIL(); };
    ASSERT_TRUE(recorder.start());
    input.changeConfiguration();
    input.stall();
    settle();
    EXPECT_EQ(session->state(), State::idle);
    EXPECT_TRUE(recorder.isRecording());
}

TEST_F(SessionStartStop, AMicrophoneThatFallsSilentIsReportedAndWhatWasSaidIsThere)
{
    int stalled = 0;
    session->onInputStalled = [&] { ++stalled; };
    session->onRecordingInterrupted = [] { FAIL() << "nothing is cancelled"; };
    record(16000);
    input.stall();
    ASSERT_TRUE(waitUntil([&] { return stalled > 0; }));
    EXPECT_EQ(session->state(), State::recording);
    const StopResult stopped = session->stop();
    ASSERT_TRUE(std::holds_alternative<RecordedAudio>(stopped));
    EXPECT_EQ(std::get<RecordedAudio>(stopped).samples->size(), 16000U);
}

TEST_F(SessionStartStop, ARecordingOfThirtyMinutesIsCapturedWhole)
{
    settings.maxRecordingSeconds.set(1800);
    record(0);
    const std::vector<float> minute(16000 * 60, 0.25F);
    for (int i = 0; i < 30; ++i)
        ASSERT_TRUE(input.push(minute));
    const StopResult stopped = session->stop();
    EXPECT_EQ(std::get<RecordedAudio>(stopped).samples->size(), minute.size() * 30);
    EXPECT_DOUBLE_EQ(std::get<RecordedAudio>(stopped).seconds, 1800.0);
}

} // namespace tulvane::test
