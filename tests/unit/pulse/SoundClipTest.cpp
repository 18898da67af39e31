#include <platform/linux/pulse/SoundClip.h>
#include <ports/Sounds.h>
#include <support/Paths.h>

#include <QFile>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace tulvane;
using namespace tulvane::test;
using namespace std::chrono_literals;

namespace {

template <class Number>
Number at(const QByteArray& bytes, qsizetype place)
{
    return qFromLittleEndian<Number>(bytes.constData() + place);
}

} // namespace

TEST(SoundClip, ALengthIsRoundedUp)
{
    EXPECT_EQ((SoundClip{.samples = QByteArray(960, 'x')}.length()), 10ms);
    EXPECT_EQ((SoundClip{.samples = QByteArray(962, 'x')}.length()), 11ms);
    EXPECT_EQ(SoundClip().length(), 0ms);
}

TEST(SoundClip, SpeechKeepsItsRateAndIsCutOffAtFullScale)
{
    const std::vector<float> samples{0, 0.5F, -0.5F, 1, -1, 3, -3};
    const SoundClip clip = speechClip(samples);
    EXPECT_EQ(clip.rate, 16000U);
    const std::vector<qint16> expected{0, 16384, -16384, 32767, -32767, 32767, -32767};
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(at<qint16>(clip.samples, static_cast<qsizetype>(2 * i)), expected[i]) << i;
    EXPECT_EQ(clip.samples.size(), 14);
    EXPECT_EQ(speechClip(std::vector<float>(1600)).length(), 100ms);
}

TEST(SoundClip, TheProgramCarriesTheFourSounds)
{
    for (const QLatin1StringView name : {Sounds::pop, Sounds::tink, Sounds::morse, Sounds::basso}) {
        QFile file(sourceFolder() + QLatin1StringView("/resources/sounds/") + name +
                   QLatin1StringView(".wav"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray wave = file.readAll();
        ASSERT_GT(wave.size(), 44) << name.data();
        EXPECT_EQ(wave.first(4), "RIFF");
        EXPECT_EQ(at<quint32>(wave, 4), wave.size() - 8);
        EXPECT_EQ(wave.sliced(8, 8), "WAVEfmt ");
        EXPECT_EQ(at<quint32>(wave, 16), 16U) << "of the format";
        EXPECT_EQ(at<quint16>(wave, 20), 1) << "whole numbers";
        EXPECT_EQ(at<quint16>(wave, 22), 1) << "channel";
        EXPECT_EQ(at<quint32>(wave, 24), SoundClip().rate);
        EXPECT_EQ(at<quint16>(wave, 34), 16) << "bits";
        EXPECT_EQ(wave.sliced(36, 4), "data");
        EXPECT_EQ(at<quint32>(wave, 40), wave.size() - 44);
        const auto carried = carriedClip(name);
        ASSERT_TRUE(carried) << name.data();
        EXPECT_EQ(carried->samples, wave.sliced(44));
        EXPECT_EQ(carried->samples.size() % 2, 0);
        EXPECT_LT(carried->length(), 500ms);
    }
}

TEST(SoundClip, TheProgramCarriesNoOther)
{
    for (const QLatin1StringView name : {QLatin1StringView("Ping"), QLatin1StringView(""),
                                         QLatin1StringView("../sounds/None"), QLatin1StringView()})
        EXPECT_FALSE(carriedClip(name));
}
