#include "WriteSound.h"

#include <audio/files/SoundFile.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>
#include <sndfile.h>

#include <cmath>
#include <numbers>

namespace tulvane {

namespace {

using Kind = SoundFileError::Kind;

/// Writes a 440 Hz tone of one second at half of full scale.
QString writeTone(const test::ScratchFolder& folder, int rate, int channels, int format)
{
    std::vector<float> frames;
    for (int i = 0; i < rate; ++i)
        frames.insert(frames.end(), static_cast<std::size_t>(channels),
                      0.5F * std::sin(2.0F * std::numbers::pi_v<float> * 440.0F * static_cast<float>(i) /
                                      static_cast<float>(rate)));
    return test::writeSound(folder, rate, channels, format, frames);
}

Kind errorOf(const QString& path)
{
    const auto sound = readSoundFile(path);
    EXPECT_FALSE(sound.has_value());
    return sound ? Kind::missing : sound.error().kind;
}

} // namespace

struct SoundFormat {
    int rate;
    int channels;
    int format;
};

class SoundFileFormats : public testing::TestWithParam<SoundFormat> {};

TEST_P(SoundFileFormats, GiveOneSecondOfTheSameTone)
{
    const test::ScratchFolder folder;
    const auto [rate, channels, format] = GetParam();
    const auto sound = readSoundFile(writeTone(folder, rate, channels, format));
    ASSERT_TRUE(sound.has_value()) << qPrintable(sound.error().description());
    EXPECT_DOUBLE_EQ(sound->seconds, 1.0);
    ASSERT_EQ(sound->samples.size(), 16000U);
    // The middle, away from the ends of the filter: amplitude and phase are the tone's.
    for (std::size_t i = 4000; i < 12000; i += 7) {
        const double expected =
            0.5 * std::sin(2.0 * std::numbers::pi * 440.0 * static_cast<double>(i) / 16000.0);
        ASSERT_NEAR(sound->samples[i], expected, 0.01) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(RatesChannelsAndFormats, SoundFileFormats,
                         testing::Values(SoundFormat{8000, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16},
                                         SoundFormat{16000, 1, SF_FORMAT_WAV | SF_FORMAT_FLOAT},
                                         SoundFormat{44100, 2, SF_FORMAT_FLAC | SF_FORMAT_PCM_24},
                                         SoundFormat{48000, 6, SF_FORMAT_WAV | SF_FORMAT_PCM_32},
                                         SoundFormat{96000, 1, SF_FORMAT_AIFF | SF_FORMAT_PCM_16},
                                         SoundFormat{192000, 2, SF_FORMAT_WAV | SF_FORMAT_DOUBLE}));

TEST(SoundFile, AtTheRecognisersRateEverySampleStaysAsItIs)
{
    const test::ScratchFolder folder;
    const auto sound = readSoundFile(writeTone(folder, 16000, 1, SF_FORMAT_WAV | SF_FORMAT_FLOAT));
    ASSERT_TRUE(sound.has_value());
    for (std::size_t i = 0; i < 16000; ++i) {
        const float written =
            0.5F * std::sin(2.0F * std::numbers::pi_v<float> * 440.0F * static_cast<float>(i) / 16000.0F);
        ASSERT_EQ(sound->samples[i], written) << i;
    }
}

TEST(SoundFile, TellsWhyItCannotBeRead)
{
    const test::ScratchFolder folder;
    EXPECT_EQ(errorOf(folder.file(QStringLiteral("none.wav"))), Kind::missing);
    EXPECT_EQ(errorOf(folder.path()), Kind::folder);
    EXPECT_EQ(errorOf(folder.write(QStringLiteral("empty.wav"), {})), Kind::empty);
    EXPECT_EQ(errorOf(folder.write(QStringLiteral("letter.wav"), QByteArray("not sound\n").repeated(99))),
              Kind::foreign);
    EXPECT_EQ(errorOf(QStringLiteral("/dev/zero")), Kind::foreign);
}

TEST(SoundFile, AFileWithoutAFrameHoldsNoSound)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(QStringLiteral("nothing.wav"));
    SF_INFO info{};
    info.samplerate = 16000;
    info.channels = 1;
    info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    sf_close(sf_open(qPrintable(path), SFM_WRITE, &info));
    EXPECT_EQ(errorOf(path), Kind::silent);
}

TEST(SoundFile, EveryErrorNamesTheFileInOneLine)
{
    for (const Kind kind : {Kind::missing, Kind::folder, Kind::unreadable, Kind::empty, Kind::foreign,
                            Kind::silent, Kind::tooLarge}) {
        const QString text =
            SoundFileError{kind, QStringLiteral("take.wav"), QStringLiteral("why")}.description();
        EXPECT_TRUE(text.startsWith(u"“take.wav” ")) << qPrintable(text);
        EXPECT_FALSE(text.contains(u'\n'));
    }
}

} // namespace tulvane
