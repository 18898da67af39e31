#include <audio/AudioRecorder.h>
#include <dictation/DictationSession.h>
#include <dictation/ManagedModelSource.h>
#include <models/ModelManager.h>
#include <platform/fake/FakeBackgroundTransfers.h>
#include <platform/fake/FakeUserDefaults.h>
#include <platform/linux/process/ProcessMemory.h>
#include <platform/linux/pulse/PulseAudioInput.h>
#include <settings/AppSettings.h>
#include <speech/whisper/WhisperEngine.h>
#include <stats/StatsStore.h>
#include <support/Await.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>
#include <support/SoundServer.h>
#include <support/Speech.h>

#include <QCoroTask>
#include <QDir>
#include <QDirIterator>

#include <gtest/gtest.h>

namespace tulvane::test {
namespace {

constexpr auto said = "Hei, dette er en test.";

/// Everything that the running program has for a dictation, wired as it wires it.
class DictationForReal : public testing::Test {
protected:
    DictationForReal()
    {
        const QString place = folders.modelFile(settings.selectedModelID());
        QDir().mkpath(folders.models);
        EXPECT_TRUE(QFile::copy(demoModelPath(), place));
        manager.refreshStates();
        settings.language.set(TranscriptionLanguage::norwegianBokmal);
        // The connection to the server is made in advance.
        EXPECT_TRUE(waitUntil([this] { return input.makeEngine()->inputFormat().channels > 0; }));
    }

    Result<Outcome, DictationError> dictate(const QString& text)
    {
        const std::vector<float> speech = speakSentence(text, QStringLiteral("nb"));
        const auto started = session.start();
        EXPECT_TRUE(started) << (started ? "" : qPrintable(started.error().description()));
        const auto player = server.play(speech, 16000);
        EXPECT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
        // What was played last is still on its way through the server's buffers.
        runEventLoopFor(std::chrono::milliseconds(500));
        return QCoro::waitFor(session.finish(session.stop()));
    }

    SoundServer server;
    ScratchFolder scratch;
    ModelFolders folders{scratch.file(QStringLiteral("data/Tulvane/Models")), scratch.path()};
    FakeUserDefaults defaults;
    AppSettings settings{defaults};
    FakeBackgroundTransfers transfers;
    ModelManager manager{{.folders = folders, .hub = QUrl(), .mode = ModelManager::SessionMode::ordinary},
                         transfers};
    ManagedModelSource models{settings, manager};
    ProcessMemory memory;
    WhisperEngine engine{QString(), memory};
    PulseAudioInput input{server.address()};
    SystemClock clock;
    AudioRecorder recorder{input, clock};
    StatsStore stats{scratch.file(QStringLiteral("data/Tulvane/statistics.json"))};
    EventLoopScheduler scheduler;
    DictationSession session{{.settings = settings,
                              .recorder = recorder,
                              .models = models,
                              .engine = engine,
                              .stats = stats,
                              .scheduler = scheduler,
                              .clock = clock,
                              .isMicrophoneAuthorized = [] { return true; },
                              .threadCount = 1}};
};

TEST_F(DictationForReal, whatIsSpokenComesOutIsCountedAndIsFirstInTheHistory)
{
    const auto first = dictate(QStringLiteral("God morgen."));
    ASSERT_TRUE(first) << qPrintable(first.error().description());
    const auto outcome = dictate(QString::fromUtf8(said));
    ASSERT_TRUE(outcome) << qPrintable(outcome.error().description());

    EXPECT_EQ(outcome->kind, Outcome::Kind::transcript);
    EXPECT_EQ(outcome->text.trimmed(), QString::fromUtf8(said));
    EXPECT_GT(outcome->durationSeconds, 1.0);
    EXPECT_EQ(session.lastTranscript(), outcome->text);
    ASSERT_EQ(session.history().size(), 2);
    EXPECT_EQ(session.history().constFirst().text, outcome->text);
    ASSERT_EQ(stats.days().size(), 1);
    EXPECT_EQ(stats.days().constFirst().dictations, 2);
    EXPECT_EQ(server.openMicrophones(), 0);
    EXPECT_EQ(session.state(), DictationSession::State::idle);
}

TEST_F(DictationForReal, nothingOfItIsWrittenDown)
{
    ASSERT_TRUE(dictate(QString::fromUtf8(said)));
    QDirIterator files(scratch.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    int looked = 0;
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.fileName().endsWith(QStringLiteral(".bin")))
            continue;
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_FALSE(file.readAll().contains("dette er en test")) << qPrintable(file.fileName());
        ++looked;
    }
    EXPECT_GT(looked, 0); // the statistics
}

TEST_F(DictationForReal, silenceIsNothingHeard)
{
    ASSERT_TRUE(session.start());
    runEventLoopFor(std::chrono::milliseconds(1200));
    const auto outcome = QCoro::waitFor(session.finish(session.stop()));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(*outcome, Outcome::nothingHeard());
    EXPECT_TRUE(stats.days().isEmpty());
    EXPECT_TRUE(session.history().isEmpty());
}

TEST_F(DictationForReal, aCancelledRecordingLeavesNothingBehind)
{
    ASSERT_TRUE(session.start());
    const auto player = server.play(speakSentence(QString::fromUtf8(said), QStringLiteral("nb")), 16000);
    EXPECT_TRUE(waitUntil([&] { return player->state() == QProcess::NotRunning; }));
    session.cancel();
    EXPECT_TRUE(waitUntil([this] { return server.openMicrophones() == 0; }));
    EXPECT_EQ(session.state(), DictationSession::State::idle);
    EXPECT_TRUE(session.lastTranscript().isEmpty());
    EXPECT_TRUE(stats.days().isEmpty());
}

} // namespace
} // namespace tulvane::test
