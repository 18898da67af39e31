#include "Signals.h"

#include <audio/SampleConverter.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <limits>
#include <random>

using namespace tulvane;
using namespace tulvane::test;
using ::testing::Each;
using ::testing::FloatNear;
using ::testing::IsEmpty;

namespace {

std::vector<float> convertAll(double rate, int channels, std::span<const float> input,
                              std::span<const std::size_t> chunks = {})
{
    auto converter = SampleConverter::create(rate, channels);
    EXPECT_TRUE(converter);
    std::vector<float> output;
    std::size_t next = 0;
    while (!input.empty()) {
        const std::size_t frames = chunks.empty()
                                       ? input.size()
                                       : chunks[next++ % chunks.size()] * static_cast<std::size_t>(channels);
        const auto chunk = input.first(std::min(frames, input.size()));
        EXPECT_TRUE(converter->convert(chunk, output));
        input = input.subspan(chunk.size());
    }
    converter->flush(output);
    return output;
}

std::vector<float> noise(std::size_t count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<float> uniform(-0.9F, 0.9F);
    std::vector<float> samples(count);
    std::ranges::generate(samples, [&] { return uniform(random); });
    return samples;
}

struct Format {
    double rate;
    int channels;
};
class SampleConverterFormats : public ::testing::TestWithParam<Format> {};

} // namespace

TEST_P(SampleConverterFormats, CutInAnyWayGivesTheSameSamples)
{
    const auto [rate, channels] = GetParam();
    const auto input = noise(static_cast<std::size_t>(rate * 1.3) * static_cast<std::size_t>(channels));
    const auto whole = convertAll(rate, channels, input);
    const std::size_t ragged[] = {1, 960, 37, 4096, 0, 441, 3};
    EXPECT_EQ(convertAll(rate, channels, input, ragged), whole);
    const std::size_t even[] = {4096};
    EXPECT_EQ(convertAll(rate, channels, input, even), whole);
}

TEST_P(SampleConverterFormats, AMinuteIsExactly960000Samples)
{
    const auto [rate, channels] = GetParam();
    const std::vector<float> input(static_cast<std::size_t>(rate * 60) * static_cast<std::size_t>(channels));
    const std::size_t chunks[] = {4096};
    EXPECT_EQ(convertAll(rate, channels, input, chunks).size(), 960000U);
}

TEST_P(SampleConverterFormats, AToneKeepsItsLevelAndShape)
{
    const auto [rate, channels] = GetParam();
    const auto output = convertAll(rate, channels, sine(440, rate, static_cast<std::size_t>(rate), channels));
    const auto ideal = sine(440, 16000, output.size());
    // The edges ring, since the sound begins and ends at once; the middle is the tone itself.
    for (std::size_t at = 2000; at < output.size() - 2000; ++at)
        ASSERT_NEAR(output[at], ideal[at], 1e-3) << at;
}

INSTANTIATE_TEST_SUITE_P(Hardware, SampleConverterFormats,
                         ::testing::Values(Format{8000, 1}, Format{11025, 2}, Format{16000, 1},
                                           Format{16000, 2}, Format{22050, 1}, Format{32000, 2},
                                           Format{44100, 1}, Format{44100, 2}, Format{48000, 1},
                                           Format{48000, 2}, Format{48000, 8}, Format{96000, 2},
                                           Format{192000, 1}),
                         [](const auto& test) {
                             return "Rate" + std::to_string(static_cast<int>(test.param.rate)) + "Channels" +
                                    std::to_string(test.param.channels);
                         });

TEST(SampleConverter, LengthIsTheInputsRoundedToTheNearestSample)
{
    for (const std::size_t frames : {1U, 2U, 3U, 100U, 441U, 479U, 480U, 481U, 1000U, 44101U}) {
        const std::vector<float> input(frames, 0.25F);
        const auto expected = static_cast<double>(frames) * 16000 / 44100;
        EXPECT_NEAR(static_cast<double>(convertAll(44100, 1, input).size()), expected, 0.501) << frames;
    }
    EXPECT_THAT(convertAll(44100, 1, {}), IsEmpty());
}

TEST(SampleConverter, StereoAt44100GivesAbout16000MonoSamplesASecondWithoutTheFlush)
{
    auto converter = SampleConverter::create(44100, 2);
    ASSERT_TRUE(converter);
    std::vector<float> output;
    for (int second = 0; second < 10; ++second)
        ASSERT_TRUE(converter->convert(sine(300, 44100, 44100, 2), output));
    EXPECT_NEAR(static_cast<double>(output.size()), 160000, 1600);
}

TEST(SampleConverter, ATransparentPathAt16000Mono)
{
    const auto input = noise(5000);
    auto converter = SampleConverter::create(16000, 1);
    ASSERT_TRUE(converter);
    std::vector<float> output;
    ASSERT_TRUE(converter->convert(input, output));
    EXPECT_EQ(output, input); // nothing is held back
    converter->flush(output);
    EXPECT_EQ(output, input);
}

TEST(SampleConverter, AppendsToWhatIsThere)
{
    for (const double rate : {16000.0, 48000.0}) {
        auto converter = SampleConverter::create(rate, 1);
        ASSERT_TRUE(converter);
        std::vector<float> output{7.0F};
        ASSERT_TRUE(converter->convert(std::vector<float>(480, 0.0F), output));
        converter->flush(output);
        EXPECT_EQ(output.front(), 7.0F);
        EXPECT_EQ(output.size(), 1 + static_cast<std::size_t>(std::lround(480 * 16000 / rate)));
    }
}

TEST(SampleConverter, AveragesTheChannels)
{
    const float frames[] = {1.0F, 0.5F, -1.0F, 1.0F, 0.2F, 0.4F, 0.3F, 0.3F};
    EXPECT_EQ(convertAll(16000, 2, frames), (std::vector<float>{0.75F, 0.0F, 0.3F, 0.3F}));
    EXPECT_THAT(convertAll(16000, 4, frames),
                ::testing::ElementsAre(FloatNear(0.375F, 1e-6F), FloatNear(0.3F, 1e-6F)));
}

TEST(SampleConverter, AVoiceOnTheSecondChannelAloneIsHeard)
{
    auto stereo = sine(440, 48000, 48000, 2);
    for (std::size_t at = 0; at < stereo.size(); at += 2)
        stereo[at] = 0;
    EXPECT_NEAR(rmsOf(convertAll(48000, 2, stereo)), 0.25 / std::numbers::sqrt2, 0.002);
}

TEST(SampleConverter, WhatLiesAbove8000HzIsGoneNotFoldedBack)
{
    const auto output = convertAll(48000, 1, sine(12000, 48000, 48000, 1, 1.0));
    const auto middle = std::span(output).subspan(2000, output.size() - 4000);
    EXPECT_LT(rmsOf(middle), 1e-5); // -100 dB; folded back, it would be a loud 4 kHz
}

TEST(SampleConverter, FlushGivesTheLastSyllable)
{
    // Of a burst in the last 30 ms, the filter still holds at least the end.
    std::vector<float> input(48000, 0.0F);
    const auto burst = sine(1000, 48000, 1440);
    std::ranges::copy(burst, input.end() - 1440);
    auto converter = SampleConverter::create(48000, 1);
    ASSERT_TRUE(converter);
    std::vector<float> output;
    ASSERT_TRUE(converter->convert(input, output));
    EXPECT_LT(output.size(), 16000U - 160U);
    converter->flush(output);
    EXPECT_EQ(output.size(), 16000U);
    EXPECT_GT(rmsOf(std::span(output).last(480)), 0.3);
}

TEST(SampleConverter, TheSoundEndsWithTheFlush)
{
    auto converter = SampleConverter::create(48000, 1);
    ASSERT_TRUE(converter);
    std::vector<float> output;
    ASSERT_TRUE(converter->convert(std::vector<float>(4800, 0.1F), output));
    converter->flush(output);
    converter->flush(output);
    EXPECT_EQ(output.size(), 1600U);
    const auto late = converter->convert(std::vector<float>(480, 0.1F), output);
    ASSERT_FALSE(late);
    EXPECT_EQ(late.error(), QStringLiteral("the sound has already ended"));
    EXPECT_EQ(output.size(), 1600U);
}

TEST(SampleConverter, AnIncompleteFrameIsRefusedAndTheNextBufferIsFine)
{
    auto converter = SampleConverter::create(48000, 2);
    ASSERT_TRUE(converter);
    std::vector<float> output;
    const auto broken = converter->convert(std::vector<float>(961, 0.1F), output);
    ASSERT_FALSE(broken);
    EXPECT_EQ(broken.error(), QStringLiteral("961 samples are no whole number of frames of 2 channels"));
    EXPECT_THAT(output, IsEmpty());
    ASSERT_TRUE(converter->convert(std::vector<float>(960, 0.1F), output));
    converter->flush(output);
    EXPECT_EQ(output.size(), 160U);
}

TEST(SampleConverter, OneSampleThatIsNoNumberSpoilsNothing)
{
    for (const float bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity()}) {
        for (const int channels : {1, 2}) {
            auto input = sine(440, 48000, 48000, channels);
            const auto clean = convertAll(48000, channels, input);
            input[24000] = bad;
            const auto output = convertAll(48000, channels, input);
            ASSERT_EQ(output.size(), clean.size());
            EXPECT_TRUE(std::ranges::all_of(output, [](float sample) { return std::isfinite(sample); }));
            EXPECT_NEAR(rmsOf(output), rmsOf(clean), 0.01);
        }
    }
}

TEST(SampleConverter, FormatsOutOfRangeAreNotSupported)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    for (const double rate : {0.0, -48000.0, 999.0, 6144001.0, nan, infinity}) {
        const auto converter = SampleConverter::create(rate, 1);
        ASSERT_FALSE(converter) << rate;
        EXPECT_EQ(converter.error(), RecorderError::unsupportedFormat());
    }
    for (const int channels : {0, -1, 1025})
        EXPECT_FALSE(SampleConverter::create(48000, channels)) << channels;
    for (const double rate : {1000.0, 8000.0, 192000.0, 6144000.0})
        EXPECT_TRUE(SampleConverter::create(rate, 1)) << rate;
    EXPECT_TRUE(SampleConverter::create(48000, 1024));
}

TEST(SampleConverter, CapacityDropsTheFractionAndAdds32)
{
    EXPECT_EQ(outputCapacity(0, 1.0 / 3), 32U);
    EXPECT_EQ(outputCapacity(4096, 16000.0 / 48000.0), 1365U + 32U);
    EXPECT_EQ(outputCapacity(4294967263U, 1.0), 4294967295U);
}

TEST(SampleConverterDeathTest, ABufferBeyond32BitsEndsTheProcess)
{
    ::testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_DEATH(std::ignore = outputCapacity(4294967264U, 1.0), "too long to convert");
    EXPECT_DEATH(std::ignore = outputCapacity(4294967295U, 2.0), "too long to convert");
}
