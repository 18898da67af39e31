#include "Ear.h"

#include <platform/linux/pulse/SoundClip.h>
#include <ports/Sounds.h>
#include <support/Await.h>
#include <support/Likeness.h>

#include <QElapsedTimer>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace tulvane::test {

using namespace std::chrono_literals;

namespace {

constexpr std::size_t rate = 48000;
// Longer than a sound may take to begin, and on its way through the recorder.
constexpr auto silence = 700ms;
// Longer than any within a sound.
constexpr std::size_t pause = rate / 5;
constexpr double sameSound = 0.9;

bool sounds(float sample)
{
    return std::abs(sample) > 0.0005F;
}

// Samples. A server puts at least a period of silence in where it got no processor in time.
constexpr std::size_t gap = 200;

// All that matters lies below 8 kHz.
constexpr std::size_t step = 3;

/// How alike they are at the best alignment around the place where both begin to sound.
double bestLikeness(std::span<const float> recorded, std::span<const float> sound)
{
    constexpr std::size_t reach = 300;
    std::vector<float> padded(reach, 0.0F);
    padded.insert(padded.end(), recorded.begin(), recorded.end());
    padded.insert(padded.end(), sound.size() + reach, 0.0F);
    double best = 0;
    for (std::size_t lag = 0; lag < 2 * reach; ++lag)
        best = std::max(best, likeness(std::span(padded).subspan(lag, sound.size()), sound, step));
    return best;
}

QString nameOf(std::span<const float> recorded)
{
    QString name = QStringLiteral("?");
    double best = sameSound;
    for (const QLatin1StringView one : {Sounds::pop, Sounds::tink, Sounds::morse, Sounds::basso}) {
        const std::vector<float> sound = samplesOf(one);
        const double alike =
            std::max(bestLikeness(recorded, sound), bestLikeness(withoutGaps(recorded), withoutGaps(sound)));
        if (alike >= best) {
            best = alike;
            name = one;
        }
    }
    return name;
}

} // namespace

std::vector<float> withoutGaps(std::span<const float> recorded)
{
    std::vector<float> samples;
    for (auto at = recorded.begin(); at != recorded.end();) {
        const auto isSilent = [silent = *at == 0](float sample) { return (sample == 0) == silent; };
        const auto end = std::find_if_not(at, recorded.end(), isSilent);
        if (*at != 0 || static_cast<std::size_t>(end - at) < gap)
            samples.insert(samples.end(), at, end);
        at = end;
    }
    return samples;
}

double energy(std::span<const float> samples)
{
    double sum = 0;
    for (const float sample : samples)
        sum += static_cast<double>(sample) * static_cast<double>(sample);
    return sum;
}

std::vector<float> samplesOf(QLatin1StringView name)
{
    const auto clip = carriedClip(name);
    if (!clip)
        qFatal("The program does not carry %s", name.data());
    std::vector<float> samples;
    for (qsizetype at = 0; at < clip->samples.size(); at += 2)
        samples.push_back(qFromLittleEndian<qint16>(clip->samples.constData() + at) / 32768.0F);
    return samples;
}

Ear::Ear(const SoundServer& server) : m_recorder(server.record(QStringLiteral("speakers.monitor")))
{
    if (!waitUntil([this] { return m_recorder->bytesAvailable() > 0; }))
        qFatal("Nothing can be recorded from the speakers");
}

Ear::~Ear()
{
    m_recorder->kill();
    m_recorder->waitForFinished();
}

void Ear::listen()
{
    // The left channel: servers differ in how loud the sum of two becomes.
    constexpr qsizetype frame = 2 * sizeof(float);
    const QByteArray bytes = m_recorder->read(m_recorder->bytesAvailable() / frame * frame);
    for (qsizetype at = 0; at < bytes.size(); at += frame)
        m_samples.push_back(qFromUnaligned<float>(bytes.constData() + at));
}

bool Ear::hasHeard()
{
    listen();
    return std::ranges::any_of(m_samples, sounds);
}

std::vector<float> Ear::heardSamples()
{
    // By the clock, not by the samples: those from before may still be waiting to be read.
    QElapsedTimer quiet;
    quiet.start();
    std::size_t known = 0;
    const auto silent = [&] {
        listen();
        if (std::any_of(m_samples.begin() + static_cast<std::ptrdiff_t>(known), m_samples.end(), sounds))
            quiet.restart();
        known = m_samples.size();
        return quiet.hasExpired(silence.count());
    };
    if (!waitUntil(silent))
        qFatal("The speakers never fall silent");
    return std::exchange(m_samples, {});
}

QStringList Ear::heard()
{
    const std::vector<float> samples = heardSamples();
    QStringList names;
    auto begin = std::ranges::find_if(samples, sounds);
    while (begin != samples.end()) {
        auto end = begin;
        for (auto next = begin; next != samples.end() && next - end < static_cast<std::ptrdiff_t>(pause);
             ++next) {
            if (sounds(*next))
                end = next;
        }
        names.append(nameOf({begin, end + 1}));
        begin = std::find_if(end + 1, samples.end(), sounds);
    }
    return names;
}

} // namespace tulvane::test
