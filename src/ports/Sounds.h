#pragma once

#include <QLatin1StringView>

#include <memory>
#include <vector>

namespace tulvane {

/// The short sounds that tell what the program does. Main thread.
class Sounds {
public:
    static constexpr QLatin1StringView pop{"Pop"};     ///< a recording has started
    static constexpr QLatin1StringView tink{"Tink"};   ///< a recording has stopped
    static constexpr QLatin1StringView morse{"Morse"}; ///< a text was delivered
    static constexpr QLatin1StringView basso{"Basso"}; ///< an error is shown

    Sounds() = default;
    Sounds(const Sounds&) = delete;
    Sounds& operator=(const Sounds&) = delete;
    virtual ~Sounds() = default;

    /// Starts the sound of this name and returns at once. Never fails: a name or a device that is not there
    /// is silence.
    virtual void play(QLatin1StringView name) = 0;

    /// Starts recorded speech, mono with 16,000 samples a second between -1 and 1, and returns at once. Never
    /// fails, as above.
    virtual void playSpeech(std::shared_ptr<const std::vector<float>> samples) = 0;
};

} // namespace tulvane
