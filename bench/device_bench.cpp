// A resident model where the program runs it, by the program's own recogniser, so that what it adds (a helper
// process, its messages) is in the figures.
//   bench_devices MODEL DEVICE      writes a line of JSON about the load, and one for each sound file, whose
//   paths
//                                   it reads from its standard input, one a line
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
#include <QJsonDocument>
#include <QJsonObject>
#include <QTextStream>

#include <cstdlib>

using namespace tulvane;

namespace {

const SystemClock systemClock;

double milliseconds(const QElapsedTimer& timer)
{
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void say(const QJsonObject& line)
{
    QTextStream(stdout) << QJsonDocument(line).toJson(QJsonDocument::Compact) << Qt::endl;
}

[[nodiscard]] QString where()
{
    const QString device = programComputing().place().device;
    return device.isEmpty() ? QStringLiteral("cpu") : device;
}

[[nodiscard]] bool take(Recognizer& engine, const QString& file)
{
    auto sound = readPlainWave(file);
    if (!sound)
        return false;
    const TranscriptionOptions options{.language = QStringLiteral("no"),
                                       .threadCount = recommendedThreadCount()};
    QElapsedTimer timer;
    timer.start();
    const auto samples = std::make_shared<const std::vector<float>>(std::move(sound->samples));
    const auto recognised = engine.transcribe(samples, options).takeResult();
    say({{QStringLiteral("milliseconds"), milliseconds(timer)},
         {QStringLiteral("device"), where()},
         {QStringLiteral("text"), recognised ? recognised->text : recognised.error().description()}});
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 3)
        return EXIT_FAILURE;
    const std::shared_ptr<LocalServices> services = openLocalServices(systemClock);
    programComputing().want(words[2]);
    RecognizerServices used = RecognizerServices::of(services);
    used.waitsForTrial = true;
    Recognizer& engine = programRecognizer(used);
    QElapsedTimer timer;
    timer.start();
    const auto loaded = engine.load(words[1]).takeResult();
    say({{QStringLiteral("milliseconds"), milliseconds(timer)},
         {QStringLiteral("device"), where()},
         {QStringLiteral("threads"), recommendedThreadCount()},
         {QStringLiteral("text"),
          loaded ? programComputing().place().reason : loaded.error().description()}});
    QTextStream files(stdin);
    QString file;
    while (loaded && files.readLineInto(&file)) {
        if (!take(engine, file))
            std::quick_exit(EXIT_FAILURE);
    }
    std::quick_exit(loaded ? EXIT_SUCCESS : EXIT_FAILURE);
}
