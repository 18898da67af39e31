#pragma once

#include <support/ScratchFolder.h>

#include <QString>

#include <sndfile.h>

#include <type_traits>
#include <vector>

namespace tulvane::test {

/// Writes interleaved samples, float or short, into a file of this form (an SF_FORMAT_ value), in the folder.
template <class Sample>
QString writeSound(const ScratchFolder& folder, int rate, int channels, int format,
                   const std::vector<Sample>& samples)
{
    const QString path = folder.file(QStringLiteral("sound"));
    SF_INFO info{};
    info.samplerate = rate;
    info.channels = channels;
    info.format = format;
    SNDFILE* const file = sf_open(qPrintable(path), SFM_WRITE, &info);
    const auto count = static_cast<sf_count_t>(samples.size());
    if constexpr (std::is_same_v<Sample, short>)
        sf_write_short(file, samples.data(), count);
    else
        sf_write_float(file, samples.data(), count);
    sf_close(file);
    return path;
}

} // namespace tulvane::test
