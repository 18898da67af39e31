#pragma once

#include <ports/Sounds.h>

#include <QStringList>

#include <functional>

namespace tulvane {

/// Keeps the names of what was played, oldest first.
class FakeSounds final : public Sounds {
public:
    void play(QLatin1StringView name) override
    {
        played.append(QString(name));
        if (onPlay)
            onPlay();
    }

    void playSpeech(std::shared_ptr<const std::vector<float>> samples) override
    {
        speech = std::move(samples);
    }

    QStringList played;
    std::shared_ptr<const std::vector<float>> speech; ///< what was played last; null before
    /// Called at the end of every `play`, for tests of an order across fakes.
    std::function<void()> onPlay;
};

} // namespace tulvane
