// How long a model takes to load and to transcribe where the program runs it, as long as it stays resident: by the
// program's own recogniser, so that what it adds (a helper process, its messages) is in the figures.
//   bench_devices MODEL DEVICE ROUNDS FILE...     a line for the load, and one for each take
#include <app/program/ProgramRecognizer.h>
#include <audio/files/PlainWave.h>
#include <base/Clock.h>
#include <ports/GraphicsCards.h>
#include <ports/HelperProcess.h>
#include <ports/LocalServices.h>
#include <ports/SystemMemory.h>
#include <speech/ThreadCount.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <cstdlib>

using namespace tulvane;

namespace {

const SystemClock systemClock;

double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() < 5)
        return EXIT_FAILURE;
    QTextStream out(stdout);
    const std::shared_ptr<LocalServices> services = openLocalServices(systemClock);
    programComputing().want(words[2]);
    Recognizer& engine = programRecognizer(RecognizerServices::of(services));
    QElapsedTimer timer;
    timer.start();
    if (const auto loaded = engine.load(words[1]).takeResult(); !loaded) {
        out << loaded.error().description() << Qt::endl;
        return EXIT_FAILURE;
    }
    const ComputingPlace place = programComputing().place();
    out << "load " << milliseconds(timer) << " ms on " << (place.device.isEmpty() ? QStringLiteral("cpu") : place.device) << ' '
        << place.reason << Qt::endl;
    const TranscriptionOptions options{.language = QStringLiteral("no"), .threadCount = recommendedThreadCount()};
    for (const QString& file : words.mid(4)) {
        auto sound = readPlainWave(file);
        if (!sound)
            return EXIT_FAILURE;
        const auto samples = std::make_shared<const std::vector<float>>(std::move(sound->samples));
        std::vector<double> times;
        QString text;
        for (int round = 0; round <= words[3].toInt(); ++round) {
            timer.start();
            const auto recognised = engine.transcribe(samples, options).takeResult();
            times.push_back(milliseconds(timer));
            text = recognised ? recognised->text : recognised.error().description();
        }
        const double first = times.front();
        if (times.size() > 1)
            times.erase(times.begin());
        out << QFileInfo(file).fileName() << " first " << first << " median " << median(times) << " least "
            << *std::ranges::min_element(times) << " most " << *std::ranges::max_element(times) << " ms on "
            << (programComputing().place().device.isEmpty() ? "cpu" : "device") << " |" << text << Qt::endl;
    }
    std::quick_exit(EXIT_SUCCESS);
}
