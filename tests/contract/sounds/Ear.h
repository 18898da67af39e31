#pragma once

#include <support/SoundServer.h>

#include <QProcess>
#include <QStringList>

#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace tulvane::test {

/// Listens at a server's speakers, from the moment when it is made. Main thread.
class Ear final {
public:
    explicit Ear(const SoundServer& server);
    Ear(const Ear&) = delete;
    Ear& operator=(const Ear&) = delete;
    ~Ear();

    /// The names of the sounds since the last call, in order, "?" for one that is none of ours; returns when
    /// there was silence for so long that nothing more can come.
    [[nodiscard]] QStringList heard();
    /// All samples since the last call, when silence has come; mono, 48 kHz.
    [[nodiscard]] std::vector<float> heardSamples();
    /// Whether something sounds, or has sounded since the last call of the others.
    [[nodiscard]] bool hasHeard();

private:
    void listen();

    std::unique_ptr<QProcess> m_recorder;
    std::vector<float> m_samples;
};

/// The samples of one of our sounds at full volume.
[[nodiscard]] std::vector<float> samplesOf(QLatin1StringView name);
/// Without the stretches of utter silence that a server on a busy machine puts into a sound.
[[nodiscard]] std::vector<float> withoutGaps(std::span<const float> recorded);
/// The sum of the squares.
[[nodiscard]] double energy(std::span<const float> samples);

} // namespace tulvane::test
