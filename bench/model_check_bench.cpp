// Time and memory of the model file's check on a sparse file of 1.5 GB, which has the shape of a medium
// model.
#include <speech/whisper/ModelFile.h>
#include <speech/whisper/ModelFileCheck.h>
#include <support/ScratchFolder.h>
#include <support/TinyModel.h>

#include <QFileInfo>

#include <benchmark/benchmark.h>
#include <sys/resource.h>

namespace {

using namespace tulvane;

long peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

void checkOfALargeModel(benchmark::State& state)
{
    const test::ScratchFolder folder;
    const QString path = folder.file(u"medium.bin"_qs);
    const test::TinyModel medium{.audioState = 1024,
                                 .audioHeads = 16,
                                 .audioLayers = 24,
                                 .textState = 1024,
                                 .textHeads = 16,
                                 .textLayers = 24};
    medium.writeSparse(path);
    const long before = peakKilobytes();
    for ([[maybe_unused]] auto round : state) {
        const auto file = openModelFile(path);
        if (!file || !checkModelFile(**file))
            state.SkipWithError("a sound model was rejected");
    }
    state.counters["MB of file"] = static_cast<double>(QFileInfo(path).size()) / 1e6;
    state.counters["MB of memory"] = static_cast<double>(peakKilobytes() - before) / 1e3;
}
BENCHMARK(checkOfALargeModel)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
