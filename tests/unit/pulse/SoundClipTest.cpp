#include <ports/Sounds.h>
#include <platform/linux/pulse/SoundClip.h>
#include <support/Paths.h>

#include <QFile>
#include <QtEndian>

using namespace tulvane;
using namespace tulvane::test;
using namespace std::chrono_literals;

namespace {

template <class Number>
QByteArray number(Number value)
{
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray chunk(const QByteArray& name, const QByteArray& content)
{
    const QByteArray padding(content.size() % 2, '\0');
    return name + number(static_cast<std::uint32_t>(content.size())) + content + padding;
}

struct Format {
    std::uint16_t coding = 1;
    std::uint16_t channels = 1;
    std::uint32_t rate = 48000;
    std::uint16_t bits = 16;
};

QByteArray formatChunk(const Format& format = {})
{
    const auto frame = static_cast<std::uint16_t>(format.channels * format.bits / 8);
    return chunk("fmt ", number(format.coding) + number(format.channels) + number(format.rate) +
                             number(format.rate * frame) + number(frame) + number(format.bits));
}

QByteArray wave(const QByteArray& chunks)
{
    return "RIFF" + number(static_cast<std::uint32_t>(chunks.size() + 4)) + "WAVE" + chunks;
}

const QByteArray samples(960, 'x');

} // namespace

TEST(SoundClip, IsReadFromAWave)
{
    const auto clip = clipFromWave(wave(formatChunk() + chunk("data", samples)));
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->rate, 48000U);
    EXPECT_EQ(clip->samples, samples);
    EXPECT_EQ(clip->length(), 10ms);
}

TEST(SoundClip, ALengthIsRoundedUp)
{
    EXPECT_EQ((SoundClip{48000, QByteArray(962, 'x')}.length()), 11ms);
    EXPECT_EQ(SoundClip().length(), 0ms);
}

TEST(SoundClip, OtherChunksAreSkipped)
{
    const auto clip = clipFromWave(
        wave(chunk("LIST", "odd") + formatChunk() + chunk("note", "even") + chunk("data", samples)));
    ASSERT_TRUE(clip);
    EXPECT_EQ(clip->samples, samples);
}

TEST(SoundClip, OtherKindsAreRefused)
{
    for (const Format& format : {Format{3}, Format{1, 2}, Format{1, 1, 0}, Format{1, 1, 48000, 8}})
        EXPECT_FALSE(clipFromWave(wave(formatChunk(format) + chunk("data", samples))));
    EXPECT_FALSE(clipFromWave(wave(formatChunk())));
    EXPECT_FALSE(clipFromWave(wave(chunk("data", samples))));
    EXPECT_FALSE(clipFromWave(wave(formatChunk() + chunk("data", {}))));
    EXPECT_FALSE(clipFromWave(wave(formatChunk() + chunk("data", "odd"))));
    EXPECT_FALSE(clipFromWave(wave(chunk("fmt ", "short") + chunk("data", samples))));
    EXPECT_FALSE(clipFromWave("RIFX" + wave(formatChunk() + chunk("data", samples)).mid(4)));
    QByteArray film = wave(formatChunk() + chunk("data", samples));
    film.replace("WAVE", "AVI ");
    EXPECT_FALSE(clipFromWave(film));
}

TEST(SoundClip, AFileThatBreaksOffIsRefused)
{
    const QByteArray whole = wave(formatChunk() + chunk("data", samples));
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(clipFromWave(whole.first(length))) << length;
}

TEST(SoundClip, TheProgramCarriesTheFourSounds)
{
    for (const QLatin1StringView name : {Sounds::pop, Sounds::tink, Sounds::morse, Sounds::basso}) {
        QFile file(sourceFolder() + QLatin1StringView("/resources/sounds/") + name +
                   QLatin1StringView(".wav"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const auto expected = clipFromWave(file.readAll());
        const auto carried = carriedClip(name);
        ASSERT_TRUE(expected && carried) << name.data();
        EXPECT_EQ(carried->samples, expected->samples);
        EXPECT_EQ(carried->rate, 48000U);
        EXPECT_LT(carried->length(), 500ms);
    }
}

TEST(SoundClip, TheProgramCarriesNoOther)
{
    for (const QLatin1StringView name : {QLatin1StringView("Ping"), QLatin1StringView(""),
                                         QLatin1StringView("../sounds/None"), QLatin1StringView()})
        EXPECT_FALSE(carriedClip(name));
}
