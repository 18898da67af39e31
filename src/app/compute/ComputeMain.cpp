#include <app/compute/ComputeService.h>
#include <app/program/ProgramFolders.h>
#include <base/Clock.h>
#include <base/Log.h>
#include <base/MessageFrame.h>
#include <ports/CoreDump.h>
#include <ports/LocalServices.h>
#include <speech/WorkerStack.h>
#include <speech/whisper/BackendLoader.h>
#include <speech/whisper/LibraryLog.h>

#include <QCoreApplication>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>

// The helper that computes on a graphics card, so that the program itself never loads a driver. It reads
// requests from its standard input and ends with it.
namespace tulvane {

namespace {

int answers = -1;

void writeAll(const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const ssize_t written =
            write(answers, bytes.constData() + done, static_cast<size_t>(bytes.size() - done));
        if (written <= 0)
            std::_Exit(EXIT_SUCCESS);
        done += written;
    }
}

void say(const helper::Answer& answer)
{
    writeAll(framed(helper::bytesOf(answer)));
}

void passLogOn(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text)
{
    const bool isError = type == QtCriticalMsg || type == QtFatalMsg || type == QtWarningMsg;
    say(helper::LogLine{.isError = isError, .text = text});
}

/// What drivers print must not come between the answers, and a driver's crash is none of the system's.
void keepToOurselves()
{
    answers = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3);
    dup2(STDERR_FILENO, STDOUT_FILENO);
    leaveNoCoreDump();
    qputenv("GGML_NO_BACKTRACE", "1");
    ignoreBackendsOfTheEnvironment();
}

void serve()
{
    static const SystemClock clock;
    const auto services = openLocalServices(clock);
    const ProgramFolders folders = ProgramFolders::ofThisProgram();
    ComputeService service(folders.deviceBackend(), folders.backends, services->memory(), say);
    MessageFrames frames;
    QByteArray buffer(1 << 16, Qt::Uninitialized);
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, buffer.data(), static_cast<size_t>(buffer.size()));
        if (count <= 0)
            std::_Exit(EXIT_SUCCESS);
        frames.add(QByteArray::fromRawData(buffer.constData(), count));
        while (const auto message = frames.next()) {
            const auto request = helper::requestOf(*message);
            if (!request)
                std::_Exit(EXIT_FAILURE);
            service.answer(*request);
        }
    }
}

} // namespace

} // namespace tulvane

int main(int argc, char** argv)
{
    using namespace tulvane;
    const QCoreApplication app(argc, argv);
    keepToOurselves();
    qInstallMessageHandler(passLogOn);
    LibraryLog::install();
    QThread* const worker = QThread::create(serve);
    worker->setStackSize(workerStack);
    worker->start();
    worker->wait();
    return EXIT_SUCCESS;
}
