#include "WriteSound.h"

#include <audio/files/PlainWave.h>
#include <audio/files/SoundFile.h>
#include <support/ScratchFolder.h>

#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace tulvane {

namespace {

/// Every value that a sample of 16 bits can have, once.
QString writeEverySample(const test::ScratchFolder& folder, int rate, int channels, int format)
{
    std::vector<short> samples;
    for (int value = -32768; value <= 32767; ++value)
        samples.push_back(static_cast<short>(value));
    return test::writeSound(folder, rate, channels, format, samples);
}

QString writePlain(const test::ScratchFolder& folder)
{
    return writeEverySample(folder, 16000, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
}

void expectLeftToTheLibrary(const QString& path)
{
    EXPECT_FALSE(isPlainWave(path));
    const auto sound = readPlainWave(path);
    ASSERT_FALSE(sound.has_value());
    EXPECT_EQ(sound.error().kind, SoundFileError::Kind::unreadable);
    EXPECT_FALSE(sound.error().detail.isEmpty());
}

} // namespace

TEST(PlainWave, HasTheSamplesThatTheLibraryReads)
{
    const test::ScratchFolder folder;
    const QString path = writePlain(folder);
    EXPECT_TRUE(isPlainWave(path));
    const auto plain = readPlainWave(path);
    const auto expected = readSoundFile(path);
    ASSERT_TRUE(plain.has_value() && expected.has_value());
    EXPECT_EQ(plain->samples, expected->samples);
    EXPECT_EQ(plain->samples.size(), 65536U);
    EXPECT_DOUBLE_EQ(plain->seconds, expected->seconds);
}

TEST(PlainWave, LeavesEveryOtherFormToTheLibrary)
{
    const test::ScratchFolder folder;
    expectLeftToTheLibrary(writeEverySample(folder, 44100, 1, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    expectLeftToTheLibrary(writeEverySample(folder, 16000, 2, SF_FORMAT_WAV | SF_FORMAT_PCM_16));
    expectLeftToTheLibrary(writeEverySample(folder, 16000, 1, SF_FORMAT_WAV | SF_FORMAT_FLOAT));
    expectLeftToTheLibrary(writeEverySample(folder, 16000, 1, SF_FORMAT_WAVEX | SF_FORMAT_PCM_16));
    expectLeftToTheLibrary(writeEverySample(folder, 16000, 1, SF_FORMAT_FLAC | SF_FORMAT_PCM_16));
}

TEST(PlainWave, LeavesAFileThatIsNotWhatItsHeaderSaysToTheLibrary)
{
    const test::ScratchFolder folder;
    QFile file(writePlain(folder));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.resize(file.size() + 8)) << "a chunk after the samples";
    expectLeftToTheLibrary(file.fileName());
    ASSERT_TRUE(file.resize(file.size() - 10)) << "cut off";
    expectLeftToTheLibrary(file.fileName());
    for (const qint64 size : {44, 43, 1, 0}) {
        ASSERT_TRUE(file.resize(size));
        expectLeftToTheLibrary(file.fileName());
    }
}

TEST(PlainWave, LeavesAHeaderWithAnyOtherWordToTheLibrary)
{
    const test::ScratchFolder folder;
    QFile file(writePlain(folder));
    ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Unbuffered));
    const QByteArray header = file.read(44);
    for (qsizetype at = 0; at < header.size(); ++at) {
        if (at >= 4 && at < 8)
            continue; // the size that the container says, which is often wrong
        QByteArray other = header;
        other[at] = static_cast<char>(other.at(at) ^ 1);
        ASSERT_TRUE(file.seek(0) && file.write(other) == header.size());
        EXPECT_FALSE(isPlainWave(file.fileName())) << "byte " << at;
    }
    ASSERT_TRUE(file.seek(0) && file.write(header) == header.size());
    EXPECT_TRUE(isPlainWave(file.fileName()));
}

TEST(PlainWave, LeavesWhatIsNoFileToTheLibrary)
{
    const test::ScratchFolder folder;
    expectLeftToTheLibrary(folder.file(QStringLiteral("missing")));
    expectLeftToTheLibrary(folder.file({}));
    const QString pipe = folder.file(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(qPrintable(pipe), 0600), 0);
    expectLeftToTheLibrary(pipe);
}

} // namespace tulvane
