#pragma once

#include <QString>

#include <memory>
#include <variant>
#include <vector>

namespace tulvane {

/// How one dictation ended.
struct Outcome {
    enum class Kind {
        transcript,        ///< there is a text
        tooShort,          ///< the recording was shorter than 0.4 s
        nothingHeard,      ///< the audio never rose above -50 dBFS, or nothing was being recorded
        nothingRecognised, ///< the recogniser's text was empty once cleaned
    };
    Kind kind = Kind::nothingHeard;
    QString text;               ///< of a transcript; not empty
    double durationSeconds = 0; ///< of a transcript's audio

    [[nodiscard]] static Outcome transcript(const QString& text, double durationSeconds)
    {
        return {Kind::transcript, text, durationSeconds};
    }
    [[nodiscard]] static Outcome tooShort() { return {Kind::tooShort, {}, 0}; }
    [[nodiscard]] static Outcome nothingHeard() { return {Kind::nothingHeard, {}, 0}; }
    [[nodiscard]] static Outcome nothingRecognised() { return {Kind::nothingRecognised, {}, 0}; }

    [[nodiscard]] bool operator==(const Outcome&) const = default;
};

/// A finished recording that is worth transcribing. The samples (mono, 16,000 a second) are shared, so that
/// they can be tried again without a copy.
struct RecordedAudio {
    std::shared_ptr<const std::vector<float>> samples;
    double seconds = 0;
};

/// What stopping gave: a verdict at once, or audio for `DictationSession::finish`.
using StopResult = std::variant<Outcome, RecordedAudio>;

} // namespace tulvane
