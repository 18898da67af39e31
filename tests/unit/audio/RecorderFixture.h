#pragma once

#include "Signals.h"

#include <audio/AudioRecorder.h>
#include <platform/fake/FakeAudioInput.h>
#include <support/Await.h>
#include <support/FakeClock.h>
#include <support/LogCapture.h>

#include <gtest/gtest.h>

namespace tulvane::test {

/// A recorder over a scripted microphone, a held clock and a captured log.
class RecorderFixture : public ::testing::Test {
protected:
    RecorderFixture()
    {
        QObject::connect(&recorder, &AudioRecorder::levelChanged, &recorder,
                         [this](float level) { levels.push_back(level); });
    }

    void start()
    {
        const auto started = recorder.start();
        ASSERT_TRUE(started) << qPrintable(started.error().description());
    }
    [[nodiscard]] QStringList infoLines() const { return log.texts("audio", QtInfoMsg); }
    [[nodiscard]] QStringList errorLines() const { return log.texts("audio", QtCriticalMsg); }
    static void settle() { QCoreApplication::processEvents(); }

    FakeAudioInput input;
    FakeClock clock;
    LogCapture log;
    AudioRecorder recorder{input, clock};
    std::vector<float> levels; ///< every level that was published
};

} // namespace tulvane::test
