#include <platform/linux/pulse/SoundClip.h>

#include <QFile>

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

std::optional<SoundClip> carriedClip(QLatin1StringView name)
{
    linkSounds();
    QFile file(QLatin1StringView(":/sounds/") + name + QLatin1StringView(".wav"));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return SoundClip{file.readAll().mid(header)};
}

} // namespace tulvane
