#include <platform/linux/pulse/SoundClip.h>

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cmath>

// A static library's resources are linked only where they are asked for; the macro must stand outside of
// every namespace.
static void linkSounds()
{
    Q_INIT_RESOURCE(sounds);
}

namespace tulvane {

namespace {

// The files are the program's own WAVs, each with the same plain header; a test looks at it.
constexpr qsizetype header = 44;

} // namespace

std::chrono::milliseconds SoundClip::length() const
{
    const auto frames = samples.size() / static_cast<qsizetype>(sizeof(std::int16_t));
    return std::chrono::milliseconds((1000 * frames + rate - 1) / rate);
}

SoundClip speechClip(std::span<const float> samples)
{
    constexpr std::uint32_t speechRate = 16000;
    constexpr float fullScale = 32767;
    SoundClip clip{.samples = {}, .rate = speechRate};
    clip.samples.resize(static_cast<qsizetype>(samples.size()) *
                        static_cast<qsizetype>(sizeof(std::int16_t)));
    char* at = clip.samples.data();
    for (const float sample : samples) {
        qToLittleEndian(static_cast<qint16>(std::lround(std::clamp(sample, -1.0F, 1.0F) * fullScale)), at);
        at += sizeof(std::int16_t);
    }
    return clip;
}

std::optional<SoundClip> carriedClip(QLatin1StringView name)
{
    linkSounds();
    QFile file(QLatin1StringView(":/sounds/") + name + QLatin1StringView(".wav"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return SoundClip{.samples = file.readAll().mid(header)};
}

} // namespace tulvane
