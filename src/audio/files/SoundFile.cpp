#include <audio/SampleConverter.h>
#include <audio/files/SoundFile.h>

#include <QFile>
#include <QFileInfo>

#include <sndfile.h>

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>

namespace tulvane {

namespace {

constexpr sf_count_t framesPerBlock = 16384;

struct CloseSound {
    void operator()(SNDFILE* file) const { sf_close(file); }
};
using SoundHandle = std::unique_ptr<SNDFILE, CloseSound>;

std::optional<SoundFileError> refuse(const QFileInfo& info)
{
    using Kind = SoundFileError::Kind;
    const QString path = info.filePath();
    if (!info.exists())
        return SoundFileError{Kind::missing, path, {}};
    if (info.isDir())
        return SoundFileError{Kind::folder, path, {}};
    // A pipe would block the opening for ever, and most formats need to seek.
    if (!info.isFile())
        return SoundFileError{Kind::foreign, path, QStringLiteral("it is not a regular file")};
    if (info.size() == 0)
        return SoundFileError{Kind::empty, path, {}};
    return std::nullopt;
}

Result<Sound, SoundFileError> convertAll(SNDFILE* file, const SF_INFO& format, const QString& path)
{
    using Kind = SoundFileError::Kind;
    auto converter = SampleConverter::create(format.samplerate, format.channels);
    if (!converter)
        return failure(
            SoundFileError{Kind::foreign, path, QStringLiteral("its sample format is out of range")});

    Sound sound;
    // Nothing is reserved: a header may promise more frames than the file holds.
    const auto channels = static_cast<std::size_t>(format.channels);
    std::vector<float> block(static_cast<std::size_t>(framesPerBlock) * channels);
    sf_count_t frames = 0;
    while (const sf_count_t read = sf_readf_float(file, block.data(), framesPerBlock)) {
        if (read < 0)
            break;
        frames += read;
        const std::span<const float> interleaved(block.data(), static_cast<std::size_t>(read) * channels);
        if (const auto converted = converter->convert(interleaved, sound.samples); !converted)
            return failure(SoundFileError{Kind::unreadable, path, converted.error()});
        if (sound.samples.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
            return failure(SoundFileError{Kind::tooLarge, path, {}});
    }
    if (sf_error(file) != SF_ERR_NO_ERROR)
        return failure(SoundFileError{Kind::unreadable, path, QString::fromUtf8(sf_strerror(file))});
    if (frames == 0)
        return failure(SoundFileError{Kind::silent, path, {}});
    converter->flush(sound.samples);
    sound.seconds = static_cast<double>(frames) / format.samplerate;
    return sound;
}

} // namespace

Result<Sound, SoundFileError> readSoundFile(const QString& path)
{
    using Kind = SoundFileError::Kind;
    if (auto refusal = refuse(QFileInfo(path)))
        return failure(*refusal);
    QFile opened(path);
    if (!opened.open(QIODevice::ReadOnly))
        return failure(SoundFileError{Kind::unreadable, path, opened.errorString()});

    SF_INFO format{};
    const SoundHandle file(sf_open_fd(opened.handle(), SFM_READ, &format, SF_FALSE));
    if (!file)
        return failure(SoundFileError{Kind::foreign, path, QString::fromUtf8(sf_strerror(nullptr))});
    try {
        return convertAll(file.get(), format, path);
    } catch (const std::bad_alloc&) {
        return failure(SoundFileError{Kind::tooLarge, path, {}});
    } catch (const std::length_error&) {
        return failure(SoundFileError{Kind::tooLarge, path, {}});
    }
}

} // namespace tulvane
