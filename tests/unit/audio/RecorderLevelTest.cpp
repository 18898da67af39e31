#include "RecorderFixture.h"

#include <gmock/gmock.h>

using namespace tulvane;
using namespace tulvane::test;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::FloatNear;
using ::testing::IsEmpty;

namespace {

class RecorderLevel : public RecorderFixture {
protected:
    RecorderLevel() { input.setFormat({16000, 1}); }

    /// One buffer of a constant absolute value, so that its root mean square is that value.
    void speak(float amplitude)
    {
        ASSERT_TRUE(input.push(std::vector<float>(320, amplitude)));
        settle();
    }
};

constexpr float loud = 1.0F;
constexpr float medium = 0.1F; // -20 dBFS

} // namespace

TEST_F(RecorderLevel, FollowsTheInput)
{
    start();
    speak(loud);
    EXPECT_EQ(recorder.level(), 1.0F);
    clock.advance(51ms);
    speak(medium);
    EXPECT_NEAR(recorder.level(), 0.6F, 1e-5);
    clock.advance(51ms);
    speak(0.0F);
    EXPECT_EQ(recorder.level(), 0.0F);
    EXPECT_THAT(levels, ElementsAre(1.0F, FloatNear(0.6F, 1e-5F), 0.0F));
}

TEST_F(RecorderLevel, ComesFromTheOneBufferThatIsPublished)
{
    start();
    speak(loud);
    clock.advance(30ms);
    speak(loud);
    clock.advance(30ms);
    speak(medium);
    EXPECT_NEAR(recorder.level(), 0.6F, 1e-5);
}

TEST_F(RecorderLevel, TwoBuffers30MillisecondsApartPublishOneLevel)
{
    start();
    speak(medium);
    clock.advance(30ms);
    speak(loud);
    EXPECT_THAT(levels, ElementsAre(FloatNear(0.6F, 1e-5F)));
}

TEST_F(RecorderLevel, ExactlyTheIntervalIsNotYetEnough)
{
    start();
    speak(medium);
    clock.advance(50ms);
    speak(loud);
    EXPECT_EQ(levels.size(), 1U);
    clock.advance(1ms);
    speak(loud);
    EXPECT_EQ(levels.size(), 2U);
}

TEST_F(RecorderLevel, AWallClockThatGoesBackDoesNotFreezeIt)
{
    start();
    speak(medium);
    clock.advance(51ms);
    clock.setNow(clock.now().addSecs(-3600));
    speak(loud);
    EXPECT_EQ(recorder.level(), 1.0F);
}

TEST_F(RecorderLevel, ArrivesThroughTheEventLoop)
{
    start();
    ASSERT_TRUE(input.push(std::vector<float>(320, loud)));
    EXPECT_EQ(recorder.level(), 0.0F);
    settle();
    EXPECT_EQ(recorder.level(), 1.0F);
}

TEST_F(RecorderLevel, IsZeroFromTheStopOn)
{
    start();
    speak(loud);
    clock.advance(1s);
    ASSERT_TRUE(input.push(std::vector<float>(320, medium))); // on its way when the recording stops
    std::ignore = recorder.stop();
    EXPECT_EQ(recorder.level(), 0.0F);
    settle();
    EXPECT_EQ(recorder.level(), 0.0F);
    EXPECT_THAT(levels, ElementsAre(1.0F, 0.0F));
}

TEST_F(RecorderLevel, OfAnEarlierRecordingDoesNotReachTheNext)
{
    start();
    ASSERT_TRUE(input.push(std::vector<float>(320, loud)));
    std::ignore = recorder.stop();
    start();
    settle();
    EXPECT_EQ(recorder.level(), 0.0F);
    EXPECT_THAT(levels, IsEmpty());
}

TEST_F(RecorderLevel, IsPublishedAtOnceInEveryRecording)
{
    start();
    speak(loud);
    std::ignore = recorder.stop();
    levels.clear();
    start();
    speak(loud); // the clock has not moved
    EXPECT_THAT(levels, ElementsAre(1.0F));
}

TEST_F(RecorderLevel, WaitsForTheConvertersFirstOutput)
{
    input.setFormat({48000, 1});
    start();
    ASSERT_TRUE(input.push(std::vector<float>(96, loud))); // all of it is still in the filter
    settle();
    EXPECT_THAT(levels, IsEmpty());
    ASSERT_TRUE(input.push(std::vector<float>(48000, loud)));
    settle();
    EXPECT_EQ(levels.size(), 1U);
}
