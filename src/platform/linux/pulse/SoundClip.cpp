#include <platform/linux/pulse/SoundClip.h>

#include <QFile>
#include <QtEndian>

// A static library's resources are linked only where they are asked for; the macro must stand outside of
// every namespace.
static void linkSounds()
{
    Q_INIT_RESOURCE(sounds);
}

namespace tulvane {

namespace {

constexpr qsizetype chunkHeader = 8; // a name of four letters, and the length
constexpr qsizetype fileHeader = 12; // "RIFF", the length, "WAVE"
constexpr qsizetype shortestFormat = 16;
constexpr std::uint16_t wholeNumbers = 1;

template <class Number>
Number numberAt(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

/// The content of the chunk of this name; empty where there is none, or not all of it.
QByteArray chunk(const QByteArray& file, QByteArrayView name)
{
    qsizetype at = fileHeader;
    while (file.size() - at >= chunkHeader) {
        const qsizetype length = numberAt<std::uint32_t>(file, at + 4);
        if (length > file.size() - at - chunkHeader)
            return {};
        if (QByteArrayView(file).sliced(at, 4) == name)
            return file.mid(at + chunkHeader, length);
        at += chunkHeader + length + length % 2;
    }
    return {};
}

} // namespace

std::chrono::milliseconds SoundClip::length() const
{
    const auto frames = samples.size() / static_cast<qsizetype>(sizeof(std::int16_t));
    return std::chrono::milliseconds(rate > 0 ? (1000 * frames + rate - 1) / rate : 0);
}

std::optional<SoundClip> clipFromWave(const QByteArray& file)
{
    if (!file.startsWith("RIFF") || file.mid(8, 4) != "WAVE")
        return std::nullopt;
    const QByteArray format = chunk(file, "fmt ");
    if (format.size() < shortestFormat || numberAt<std::uint16_t>(format, 0) != wholeNumbers)
        return std::nullopt;
    const auto channels = numberAt<std::uint16_t>(format, 2);
    const auto bits = numberAt<std::uint16_t>(format, 14);
    SoundClip clip{numberAt<std::uint32_t>(format, 4), chunk(file, "data")};
    if (channels != 1 || bits != 16 || clip.rate == 0 || clip.samples.isEmpty() ||
        clip.samples.size() % 2 != 0)
        return std::nullopt;
    return clip;
}

std::optional<SoundClip> carriedClip(QLatin1StringView name)
{
    linkSounds();
    QFile file(QLatin1StringView(":/sounds/") + name + QLatin1StringView(".wav"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return clipFromWave(file.readAll());
}

} // namespace tulvane
