#include <audio/files/PlainWave.h>

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>
#include <cstring>
#include <limits>
#include <new>
#include <optional>

namespace tulvane {

namespace {

constexpr qsizetype headerSize = 44;
constexpr int rate = 16000;
constexpr int bytesPerSample = 2;

struct Header {
    std::array<char, headerSize> bytes{};

    [[nodiscard]] bool says(int offset, const char* fourCC) const
    {
        return std::memcmp(bytes.data() + offset, fourCC, 4) == 0;
    }
    [[nodiscard]] quint32 number32(int offset) const
    {
        return qFromLittleEndian<quint32>(bytes.data() + offset);
    }
    [[nodiscard]] quint16 number16(int offset) const
    {
        return qFromLittleEndian<quint16>(bytes.data() + offset);
    }
    /// A header of the shortest form, its one chunk of samples filling the file to its end.
    [[nodiscard]] bool isPlain(qint64 fileSize) const
    {
        constexpr quint16 pcm = 1;
        const bool isShortest =
            says(0, "RIFF") && says(8, "WAVE") && says(12, "fmt ") && number32(16) == 16 && says(36, "data");
        const bool isOurs = number16(20) == pcm && number16(22) == 1 && number32(24) == rate &&
                            number32(28) == rate * bytesPerSample && number16(32) == bytesPerSample &&
                            number16(34) == 8 * bytesPerSample;
        const qint64 size = number32(40);
        return isShortest && isOurs && size > 0 && size % bytesPerSample == 0 &&
               size == fileSize - headerSize && size < std::numeric_limits<int>::max();
    }
};

/// The samples' bytes, of a file that is plain.
std::optional<qint64> openPlain(QFile& file)
{
    // A pipe would block the opening for ever.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    Header header;
    if (file.read(header.bytes.data(), headerSize) != headerSize || !header.isPlain(file.size()))
        return std::nullopt;
    return file.size() - headerSize;
}

/// Appends the file's next samples; false at its end or when it cannot be read.
bool append(std::vector<float>& samples, QFile& file)
{
    constexpr qint64 samplesPerBlock = 16384;
    constexpr float fullScale = 32768;
    const QByteArray bytes = file.read(samplesPerBlock * bytesPerSample);
    for (qsizetype at = 0; at + bytesPerSample <= bytes.size(); at += bytesPerSample)
        samples.push_back(static_cast<float>(qFromLittleEndian<qint16>(bytes.data() + at)) / fullScale);
    return !bytes.isEmpty();
}

} // namespace

bool isPlainWave(const QString& path)
{
    QFile file(path);
    return openPlain(file).has_value();
}

Result<Sound, SoundFileError> readPlainWave(const QString& path)
{
    using Kind = SoundFileError::Kind;
    QFile file(path);
    const std::optional<qint64> size = openPlain(file);
    if (!size)
        return failure(SoundFileError{Kind::unreadable, path, QStringLiteral("it changed meanwhile")});
    try {
        Sound sound;
        sound.samples.reserve(static_cast<std::size_t>(*size) / bytesPerSample);
        while (append(sound.samples, file)) {
        }
        if (static_cast<qint64>(sound.samples.size()) * bytesPerSample != *size)
            return failure(SoundFileError{Kind::unreadable, path, file.errorString()});
        sound.seconds = static_cast<double>(sound.samples.size()) / rate;
        return sound;
    } catch (const std::bad_alloc&) {
        return failure(SoundFileError{Kind::tooLarge, path, {}});
    }
}

} // namespace tulvane
