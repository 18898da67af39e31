#include "Signals.h"

#include <audio/AudioRecorder.h>
#include <audio/Level.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace tulvane;
using namespace tulvane::test;

namespace {

std::vector<float> square(float amplitude)
{
    std::vector<float> samples(320);
    for (std::size_t at = 0; at < samples.size(); ++at)
        samples[at] = at % 40 < 20 ? amplitude : -amplitude;
    return samples;
}

float amplitudeAt(double decibels)
{
    return static_cast<float>(std::pow(10.0, decibels / 20));
}

} // namespace

TEST(MeterLevel, SilenceIsZero)
{
    EXPECT_EQ(meterLevel(std::vector<float>(320, 0.0F)), 0.0F);
    EXPECT_EQ(meterLevel({}), 0.0F);
}

TEST(MeterLevel, FullScaleIsOne)
{
    EXPECT_EQ(meterLevel(square(1.0F)), 1.0F);
}

TEST(MeterLevel, BeyondFullScaleStaysOne)
{
    EXPECT_EQ(meterLevel(square(2.0F)), 1.0F);
}

TEST(MeterLevel, IsLinearInDecibels)
{
    EXPECT_NEAR(meterLevel(square(amplitudeAt(-20))), 0.6F, 1e-5);
    EXPECT_NEAR(meterLevel(square(amplitudeAt(-10))), 0.8F, 1e-5);
    EXPECT_NEAR(meterLevel(square(amplitudeAt(-49))), 0.02F, 1e-5);
}

TEST(MeterLevel, Minus50AndQuieterIsZero)
{
    EXPECT_NEAR(meterLevel(square(amplitudeAt(-49.999))), 0.0F, 1e-4);
    EXPECT_EQ(meterLevel(square(amplitudeAt(-50.001))), 0.0F);
    EXPECT_EQ(meterLevel(square(amplitudeAt(-90))), 0.0F);
    EXPECT_EQ(meterLevel(square(amplitudeAt(-121))), 0.0F);
    EXPECT_EQ(meterLevel(square(1e-30F)), 0.0F);
}

TEST(MeterLevel, IsTheRootMeanSquareNotThePeak)
{
    EXPECT_NEAR(meterLevel(sine(500, 16000, 16000, 1, 1.0)), (50 - 3.0103) / 50, 1e-4);
}

TEST(PeakExceeds, SilenceNeverPasses)
{
    const std::vector<float> zeros(100, 0.0F);
    for (const float threshold : {-50.0F, -120.0F, 0.0F}) {
        EXPECT_FALSE(AudioRecorder::peakExceeds({}, threshold));
        EXPECT_FALSE(AudioRecorder::peakExceeds(zeros, threshold));
    }
}

TEST(PeakExceeds, SilenceCountsAsMinus120)
{
    EXPECT_TRUE(AudioRecorder::peakExceeds({}, -120.5F));
    EXPECT_TRUE(AudioRecorder::peakExceeds(std::vector<float>(3, 0.0F), -120.5F));
}

TEST(PeakExceeds, AnythingQuieterIsRaisedToMinus120)
{
    const float faint[] = {1e-9F};
    EXPECT_FALSE(AudioRecorder::peakExceeds(faint, -120.0F));
    EXPECT_TRUE(AudioRecorder::peakExceeds(faint, -130.0F));
}

TEST(PeakExceeds, OneLoudSampleIsEnough)
{
    std::vector<float> samples(1000, 0.0F);
    samples[500] = 0.01F;
    EXPECT_TRUE(AudioRecorder::peakExceeds(samples, -50));
    samples[500] = -0.01F;
    EXPECT_TRUE(AudioRecorder::peakExceeds(samples, -50));
    samples[500] = 0.003F;
    EXPECT_FALSE(AudioRecorder::peakExceeds(samples, -50));
}

TEST(PeakExceeds, ThePeakMustLieStrictlyAbove)
{
    const float exact[] = {amplitudeAt(-50)};
    EXPECT_FALSE(AudioRecorder::peakExceeds(exact, -50));
    const float full[] = {1.0F};
    EXPECT_FALSE(AudioRecorder::peakExceeds(full, 0));
    const float above[] = {amplitudeAt(-49.99)};
    EXPECT_TRUE(AudioRecorder::peakExceeds(above, -50));
}
