#include <audio/RecorderError.h>
#include <dictation/MicrophoneTest.h>
#include <platform/fake/FakeAudioInput.h>
#include <support/FakeClock.h>
#include <support/FakeScheduler.h>

#include <QCoreApplication>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;
using Answer = MicrophoneTest::Answer;

class MicrophoneTestTest : public testing::Test {
protected:
    MicrophoneTestTest() { input.setFormat({.sampleRate = 16000, .channels = 1}); }
    void say(float loudness)
    {
        static_cast<void>(input.push(std::vector<float>(16000, loudness)));
        QCoreApplication::processEvents();
    }

    FakeAudioInput input;
    FakeClock clock;
    FakeScheduler scheduler{&clock};
    MicrophoneTest microphone{input, clock, scheduler};
};

TEST_F(MicrophoneTestTest, ListensForThreeSecondsAndSaysWhetherItHeardSomething)
{
    EXPECT_EQ(microphone.answer(), Answer::none);
    microphone.start();
    EXPECT_TRUE(microphone.isRunning());
    say(0.5F);
    EXPECT_GT(microphone.level(), 0.1F);
    scheduler.advance(2999ms);
    EXPECT_TRUE(input.isOpen());
    scheduler.advance(1ms);
    EXPECT_FALSE(input.isOpen());
    EXPECT_EQ(microphone.level(), 0);
    EXPECT_EQ(microphone.answer(), Answer::heard);
    EXPECT_TRUE(scheduler.pending().empty());
}

TEST_F(MicrophoneTestTest, SilenceIsSaidAndTheNextTestBeginsAnew)
{
    microphone.start();
    say(0.5F);
    microphone.stop();
    EXPECT_EQ(microphone.answer(), Answer::heard);
    microphone.start();
    EXPECT_EQ(microphone.answer(), Answer::none);
    say(0);
    scheduler.advance(3s);
    EXPECT_EQ(microphone.answer(), Answer::silent);
}

TEST_F(MicrophoneTestTest, WhyThereIsNoTestIsSaid)
{
    input.setFormat({});
    microphone.start();
    EXPECT_FALSE(microphone.isRunning());
    EXPECT_EQ(microphone.answer(), Answer::failed);
    EXPECT_EQ(microphone.failure(), RecorderError::noInputDevice().description());
}

TEST_F(MicrophoneTestTest, AMicrophoneThatIsLostEndsIt)
{
    microphone.start();
    input.changeConfiguration();
    QCoreApplication::processEvents();
    EXPECT_FALSE(microphone.isRunning());
    EXPECT_EQ(microphone.answer(), Answer::silent);
}

TEST_F(MicrophoneTestTest, ASecondStartChangesNothing)
{
    microphone.start();
    scheduler.advance(2s);
    microphone.start();
    scheduler.advance(1s);
    EXPECT_FALSE(microphone.isRunning());
    EXPECT_EQ(input.enginesMade(), 1);
}

TEST_F(MicrophoneTestTest, TheMicrophoneIsNamedWithoutBeingOpened)
{
    input.setDeviceName(QStringLiteral("USB Microphone"));
    EXPECT_EQ(microphone.deviceName(), QStringLiteral("USB Microphone"));
    EXPECT_FALSE(input.isOpen());
}

} // namespace

} // namespace tulvane::test
