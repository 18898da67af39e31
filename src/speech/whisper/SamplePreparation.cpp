#include <speech/whisper/SamplePreparation.h>

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <limits>

namespace tulvane {

int librarySampleCount(std::size_t count)
{
    if (count > static_cast<std::size_t>(std::numeric_limits<qint32>::max()))
        qFatal("the sample count does not fit in 32 bits");
    return static_cast<int>(count);
}

void prepareSamples(std::vector<float>& samples)
{
    for (float& sample : samples)
        sample = std::isnan(sample) ? 0.0F : std::clamp(sample, -loudestSample, loudestSample);
    if (samples.size() < fewestSamples)
        samples.resize(fewestSamples, 0.0F);
}

} // namespace tulvane
