#include <speech/whisper/SamplePreparation.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tulvane {
namespace {

TEST(SamplePreparation, padsWithSilenceToTheLeast)
{
    for (const std::size_t count : {0U, 1U, 200U, 201U, 19'199U}) {
        std::vector<float> samples(count, 0.5F);
        prepareSamples(samples);
        ASSERT_EQ(samples.size(), 19'200U) << count;
        for (std::size_t i = 0; i < samples.size(); ++i)
            ASSERT_EQ(samples[i], i < count ? 0.5F : 0.0F) << count << " " << i;
    }
}

TEST(SamplePreparation, leavesEnoughSamplesAsTheyAre)
{
    for (const std::size_t count : {19'200U, 19'201U, 100'000U}) {
        std::vector<float> samples(count);
        for (std::size_t i = 0; i < count; ++i)
            samples[i] = static_cast<float>(i % 2001) / 1000.0F - 1.0F;
        const std::vector<float> before = samples;
        prepareSamples(samples);
        EXPECT_EQ(samples, before);
    }
}

TEST(SamplePreparation, makesSoundOfWhatIsNone)
{
    constexpr float infinity = std::numeric_limits<float>::infinity();
    std::vector<float> samples = {std::nanf(""), infinity, -infinity, 1e30F, -1e30F, 1.5F, -32768.0F, 0.25F};
    prepareSamples(samples);
    samples.resize(8);
    EXPECT_EQ(samples,
              (std::vector<float>{0.0F, 32768.0F, -32768.0F, 32768.0F, -32768.0F, 1.5F, -32768.0F, 0.25F}));
}

TEST(SamplePreparation, countsInThirtyTwoBits)
{
    EXPECT_EQ(librarySampleCount(0), 0);
    EXPECT_EQ(librarySampleCount(2'147'483'647), 2'147'483'647);
}

TEST(SamplePreparationDeathTest, stopsAtMoreThanThirtyTwoBits)
{
    EXPECT_DEATH((void)librarySampleCount(2'147'483'648), "sample count does not fit in 32 bits");
}

} // namespace
} // namespace tulvane
