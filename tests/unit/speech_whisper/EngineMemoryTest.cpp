// The engine in a process whose memory is limited by the system itself: whatever the limit, it ends in a
// failure that is told, never in an abort.
#include <platform/linux/process/ProcessMemory.h>
#include <speech/whisper/ModelFile.h>
#include <speech/whisper/ModelFileCheck.h>
#include <speech/whisper/WhisperEngine.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>
#include <support/TinyModel.h>

#include <QFile>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tulvane {
namespace {

Recognizer::Samples silence(std::size_t count)
{
    return std::make_shared<const std::vector<float>>(count, 0.0F);
}

using test::TinyModel;

constexpr int loadedAndRan = 10;
constexpr int refused = 11;
constexpr int transcriptionRefused = 12;

qint64 peakOfThisProcess()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return qint64{usage.ru_maxrss} * 1024;
}

/// In a child process: room for so many bytes more, then a load and, where it works, a transcription that
/// falls back over all temperatures.
int outcomeWithRoomFor(rlim_t room, const QString& model)
{
    const pid_t child = fork();
    if (child == 0) {
        QFile statm(u"/proc/self/statm"_qs);
        const bool opened = statm.open(QIODevice::ReadOnly);
        const rlim_t used =
            statm.readAll().split(' ').value(0).toULongLong() * static_cast<rlim_t>(getpagesize());
        const rlimit limit{used + room, used + room};
        if (!opened || setrlimit(RLIMIT_AS, &limit) != 0)
            _exit(1);
        const ProcessMemory memory;
        WhisperEngine engine(QString(), memory);
        if (!engine.load(model).takeResult())
            _exit(refused);
        auto text = engine.transcribe(silence(32'000), {.language = u"no"_qs, .threadCount = 1});
        _exit(text.takeResult() ? loadedAndRan : transcriptionRefused);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

TEST(EngineMemory, neverAbortsWhateverTheLimit)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer takes the address space for itself";
#endif
    const test::ScratchFolder folder;
    const QString model =
        folder.write(u"model.bin"_qs, TinyModel{.audioState = 64, .audioHeads = 1, .textState = 64}.bytes());
    int ran = 0;
    int failed = 0;
    for (rlim_t room = 20; room <= 1100; room += 60) {
        const int outcome = outcomeWithRoomFor(room * 1'000'000, model);
        EXPECT_TRUE(outcome == loadedAndRan || outcome == refused || outcome == transcriptionRefused)
            << room << " MB: " << outcome;
        ran += outcome == loadedAndRan ? 1 : 0;
        failed += outcome == refused ? 1 : 0;
    }
    EXPECT_GT(ran, 0);
    EXPECT_GT(failed, 0);
}

TEST(EngineMemory, neededIsAtLeastWhatIsUsedAndNotFarMore)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer adds memory of its own";
#endif
    const auto file = openModelFile(test::demoModelPath());
    const qint64 needed = checkModelFile(**file)->neededMemory();
    const ProcessMemory memory;
    WhisperEngine engine(QString(), memory);
    const qint64 before = peakOfThisProcess();
    ASSERT_TRUE(engine.load(test::demoModelPath()).takeResult().has_value());
    const QString prompt = QStringLiteral("Kari og Ola ").repeated(100);
    auto text = engine.transcribe(silence(160'000),
                                  {.language = u"no"_qs, .initialPrompt = prompt, .threadCount = 1});
    ASSERT_TRUE(text.takeResult().has_value());
    const qint64 used = peakOfThisProcess() - before;
    EXPECT_GE(needed, used);
    EXPECT_LE(needed, used + 200'000'000);
}

} // namespace
} // namespace tulvane
