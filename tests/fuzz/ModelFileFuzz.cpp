// Damaged model files: none that the check can know of may pass it, and none that passes may crash the
// library.
//   fuzz_model_file [COUNT [SEED]]
#include "ModelMutation.h"

#include <platform/fake/FakeSystemMemory.h>
#include <speech/whisper/EngineCore.h>
#include <speech/whisper/LibraryLog.h>
#include <speech/whisper/ModelFileCheck.h>
#include <support/ScratchFolder.h>
#include <support/Soak.h>

#include <QBuffer>
#include <QLoggingCategory>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

using namespace tulvane;

struct Count {
    int generated = 0;
    int rejected = 0;
    int acceptedUndetectable = 0;
    int acceptedDetectable = 0;
    int crashed = 0;
};

/// Loads the file and transcribes a second of silence in a process of its own; false when that dies or hangs.
/// A model of wild weights falls back over all temperatures, doing the same thousands of times: two seconds
/// of that are enough.
bool survives(const QString& file)
{
    const pid_t child = fork();
    if (child == 0) {
        alarm(120);
        const rlimit enough{2, 3};
        setrlimit(RLIMIT_CPU, &enough);
        const FakeSystemMemory memory;
        const std::atomic<bool> closing = false;
        EngineCore engine(QString(), memory, closing);
        if (engine.load(file))
            (void)engine.transcribe(std::vector<float>(16'000, 0.0F),
                                    {.language = u"no"_qs, .threadCount = 1});
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    const bool stopped = WIFSIGNALED(status) && WTERMSIG(status) == SIGXCPU;
    return stopped || (WIFEXITED(status) && WEXITSTATUS(status) == 0);
}

void tryOne(test::ModelMutation& mutation, const test::ScratchFolder& folder, Count& count)
{
    test::ModelMutation::Outcome outcome = mutation.next();
    ++count.generated;
    QBuffer buffer(&outcome.model);
    buffer.open(QIODevice::ReadOnly);
    if (!checkModelFile(buffer)) {
        ++count.rejected;
        return;
    }
    ++(outcome.isDetectable ? count.acceptedDetectable : count.acceptedUndetectable);
    const QString file = folder.write(u"model.bin"_qs, outcome.model);
    if (survives(file))
        return;
    ++count.crashed;
    std::printf("file %d crashed the library\n", count.generated);
}

} // namespace

int main(int argc, char** argv)
{
    QLoggingCategory::setFilterRules(QStringLiteral("*=false"));
    LibraryLog::install();
    const int wanted = argc > 1 ? std::atoi(argv[1]) : test::soakCount(500, 10'000);
    const int seed = argc > 2 ? std::atoi(argv[2]) : 1;
    test::ModelMutation mutation(static_cast<quint32>(seed));
    const test::ScratchFolder folder;
    Count count;
    while (count.generated < wanted) {
        const int before = count.acceptedDetectable;
        tryOne(mutation, folder, count);
        if (count.acceptedDetectable > before)
            std::printf("file %d was accepted\n", count.generated);
    }
    std::printf("seed %d: %d generated, %d rejected, %d accepted that no check could know of, "
                "%d accepted that it could, %d crashes\n",
                seed, count.generated, count.rejected, count.acceptedUndetectable, count.acceptedDetectable,
                count.crashed);
    // Without a file that passed, the library was never tried.
    const bool meant = count.rejected > 0 && (count.acceptedUndetectable > 0 || wanted < 100);
    return meant && count.acceptedDetectable == 0 && count.crashed == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
