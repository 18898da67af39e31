#include <audio/SampleBuffer.h>

#include <gmock/gmock.h>

#include <thread>

using namespace tulvane;
using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SampleBuffer, HandsOverWhatWasAppendedInOrder)
{
    SampleBuffer buffer;
    EXPECT_THAT(buffer.take(), IsEmpty());
    buffer.append(std::vector<float>{1, 2});
    buffer.append({});
    buffer.append(std::vector<float>{3});
    EXPECT_THAT(buffer.take(), ElementsAre(1, 2, 3));
    EXPECT_THAT(buffer.take(), IsEmpty());
}

TEST(SampleBuffer, ResetEmptiesAndKeepsTheMemory)
{
    SampleBuffer buffer;
    buffer.append(std::vector<float>(2 * SampleBuffer::usualLength));
    buffer.reset();
    const auto empty = buffer.take();
    EXPECT_THAT(empty, IsEmpty());
    EXPECT_GE(empty.capacity(), 2 * SampleBuffer::usualLength);
}

TEST(SampleBuffer, AnOrdinaryDictationIsNeverMoved)
{
    SampleBuffer buffer;
    buffer.reset();
    const auto empty = buffer.take();
    EXPECT_GE(empty.capacity(), SampleBuffer::usualLength);
}

TEST(SampleBuffer, AlwaysLeavesRoomForTheEndOfTheRecording)
{
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "one thread, and gigabytes for the sanitizer to watch";
#endif
    SampleBuffer buffer;
    const std::vector<float> step(SampleBuffer::usualLength / 7 + 1);
    for (int steps = 0; steps < 40; ++steps) {
        buffer.reset();
        for (int count = 0; count < steps; ++count)
            buffer.append(step);
        const auto samples = buffer.take();
        EXPECT_EQ(samples.size(), step.size() * static_cast<std::size_t>(steps));
        EXPECT_GE(samples.capacity() - samples.size(), 4096U);
    }
}

TEST(SampleBuffer, PublishesTheFirstLevelAtOnce)
{
    for (const auto now : {0ns, std::chrono::nanoseconds(1h), std::chrono::nanoseconds::max()}) {
        SampleBuffer buffer;
        EXPECT_TRUE(buffer.shouldPublishLevel(now, 50ms));
    }
}

TEST(SampleBuffer, PublishesAgainOnlyAfterMoreThanTheInterval)
{
    SampleBuffer buffer;
    EXPECT_TRUE(buffer.shouldPublishLevel(1s, 50ms));
    EXPECT_FALSE(buffer.shouldPublishLevel(1s + 30ms, 50ms));
    EXPECT_FALSE(buffer.shouldPublishLevel(1s + 50ms, 50ms)); // exactly the interval is not more
    EXPECT_TRUE(buffer.shouldPublishLevel(1s + 50ms + 1ns, 50ms));
    EXPECT_FALSE(buffer.shouldPublishLevel(1s + 100ms, 50ms)); // counted from the last that was published
    EXPECT_TRUE(buffer.shouldPublishLevel(1s + 101ms, 50ms));
}

TEST(SampleBuffer, ResetForgetsTheLastPublication)
{
    SampleBuffer buffer;
    EXPECT_TRUE(buffer.shouldPublishLevel(1s, 50ms));
    buffer.reset();
    EXPECT_TRUE(buffer.shouldPublishLevel(1s, 50ms));
}

TEST(SampleBuffer, TakingKeepsTheLastPublication)
{
    SampleBuffer buffer;
    EXPECT_TRUE(buffer.shouldPublishLevel(1s, 50ms));
    std::ignore = buffer.take();
    EXPECT_FALSE(buffer.shouldPublishLevel(1s, 50ms));
}

TEST(SampleBuffer, LosesNothingBetweenTwoThreads)
{
    SampleBuffer buffer;
    constexpr int appends = 20000;
    std::thread audio([&] {
        for (int at = 0; at < appends; ++at) {
            const float sample[] = {static_cast<float>(at)};
            buffer.append(sample);
            std::ignore = buffer.shouldPublishLevel(std::chrono::nanoseconds(at), 50ms);
        }
    });
    std::vector<float> all;
    while (all.size() < appends) {
        const auto part = buffer.take();
        all.insert(all.end(), part.begin(), part.end());
    }
    audio.join();
    for (std::size_t at = 0; at < all.size(); ++at)
        ASSERT_EQ(all[at], static_cast<float>(at));
}
