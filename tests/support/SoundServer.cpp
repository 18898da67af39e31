#include <support/Signals.h>
#include <support/SoundServer.h>

#include <QDeadlineTimer>
#include <QDir>
#include <QProcessEnvironment>
#include <QThread>

#include <signal.h>
#include <sys/prctl.h>

namespace tulvane::test {

namespace {

constexpr int patience = 20000;

QStringList microphoneModules(const SoundServer::Microphone& microphone)
{
    const QString rate = QStringLiteral(" rate=%1 channels=%2").arg(microphone.rate).arg(microphone.channels);
    return {
        QStringLiteral("module-null-sink sink_name=speakers rate=48000"),
        QStringLiteral("module-null-sink sink_name=micsink") + rate,
        QStringLiteral("module-remap-source source_name=vmic master=micsink.monitor "
                       "source_properties=device.description=Virtual_Microphone") +
            rate,
    };
}

} // namespace

SoundServer::SoundServer(Kind kind) : SoundServer(Microphone{}, kind) {}

SoundServer::SoundServer(const Microphone& microphone, Kind kind) : m_microphone(microphone), m_kind(kind)
{
    start();
}

SoundServer::~SoundServer()
{
    kill();
}

QString SoundServer::address() const
{
    return QStringLiteral("unix:") + m_folder.file(QStringLiteral("pulse/native"));
}

QString SoundServer::busAddress() const
{
    return QStringLiteral("unix:path=") + m_folder.file(QStringLiteral("bus"));
}

void SoundServer::waitForFile(const QString& name) const
{
    for (const QDeadlineTimer limit(patience); !limit.hasExpired(); QThread::msleep(5)) {
        if (QFile::exists(m_folder.file(name)))
            return;
    }
    qFatal("%s did not appear", qPrintable(name));
}

QProcessEnvironment SoundServer::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString home = m_folder.path();
    for (const char* const name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "XDG_STATE_HOME"})
        environment.insert(QString::fromLatin1(name), home);
    environment.insert(QStringLiteral("PULSE_RUNTIME_PATH"), m_folder.file(QStringLiteral("pulse")));
    environment.insert(QStringLiteral("PULSE_SERVER"), address());
    // Not the user's bus: PipeWire's session manager needs one, PulseAudio would only register itself there.
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), busAddress());
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    return environment;
}

void SoundServer::launch(const QString& program, const QStringList& arguments)
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(m_folder.file(program + QStringLiteral(".log")), QIODevice::Append);
    process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process->start(program, arguments);
    if (!process->waitForStarted(patience))
        qFatal("%s could not be started", qPrintable(program));
    m_processes.push_back(std::move(process));
}

void SoundServer::start()
{
    QDir().mkpath(m_folder.file(QStringLiteral("pulse")));
    if (m_kind == Kind::pulseAudio)
        startPulseAudio();
    else
        startPipeWire();
    waitUntilReady();
}

void SoundServer::startPulseAudio()
{
    QString script = QStringLiteral("load-module module-native-protocol-unix auth-anonymous=1 socket=%1\n")
                         .arg(m_folder.file(QStringLiteral("pulse/native")));
    for (const QString& module : microphoneModules(m_microphone)) {
        script += QStringLiteral("load-module ") + module;
        // Without this the sink renders seconds ahead, and what is played is heard that much later.
        if (module.startsWith(QStringLiteral("module-null-sink")))
            script += QStringLiteral(" norewinds=1");
        if (!module.contains(QStringLiteral("speakers")))
            script += QStringLiteral(" format=") + m_microphone.format;
        script += u'\n';
    }
    script += QStringLiteral("set-default-sink speakers\nset-default-source vmic\n");
    const QString file = m_folder.write(QStringLiteral("pulse.pa"), script.toUtf8());
    launch(QStringLiteral("pulseaudio"),
           {QStringLiteral("-n"), QStringLiteral("-F"), file, QStringLiteral("--daemonize=no"),
            QStringLiteral("--exit-idle-time=-1"), QStringLiteral("--use-pid-file=no")});
}

void SoundServer::startPipeWire()
{
    launch(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                           QStringLiteral("--address=") + busAddress()});
    waitForFile(QStringLiteral("bus"));
    launch(QStringLiteral("pipewire"), {});
    waitForFile(QStringLiteral("pipewire-0"));
    launch(QStringLiteral("wireplumber"), {});
    launch(QStringLiteral("pipewire-pulse"), {});
    waitForFile(QStringLiteral("pulse/native"));
    for (const QString& module : microphoneModules(m_microphone))
        control(QStringList(QStringLiteral("load-module")) + module.split(u' '));
    // Possible once the session manager has taken up its work.
    insist({QStringLiteral("set-default-sink"), QStringLiteral("speakers")});
    setDefaultSource(QStringLiteral("vmic"));
}

void SoundServer::insist(const QStringList& arguments) const
{
    for (const QDeadlineTimer limit(patience); !limit.hasExpired(); QThread::msleep(10)) {
        const auto pactl = run(QStringLiteral("pactl"), arguments);
        if (pactl->waitForFinished(patience) && pactl->exitCode() == 0)
            return;
    }
    qFatal("pactl %s never succeeded", qPrintable(arguments.join(u' ')));
}

bool SoundServer::hasDefaultSource(const QString& name) const
{
    const auto info = run(QStringLiteral("pactl"), {QStringLiteral("info")});
    info->waitForFinished(patience);
    const QString line = QStringLiteral("Default Source: ") + name + u'\n';
    return QString::fromUtf8(info->readAllStandardOutput()).contains(line);
}

void SoundServer::setDefaultSource(const QString& name) const
{
    // PipeWire's session manager forgets a request that comes while it is busy, so it is repeated.
    for (const QDeadlineTimer limit(patience); !limit.hasExpired();) {
        insist({QStringLiteral("set-default-source"), name});
        for (const QDeadlineTimer soon(500); !soon.hasExpired(); QThread::msleep(5)) {
            if (hasDefaultSource(name))
                return;
        }
    }
    qFatal("%s does not become the default source", qPrintable(name));
}

void SoundServer::waitUntilReady() const
{
    for (const QDeadlineTimer limit(patience); !limit.hasExpired(); QThread::msleep(10)) {
        if (hasDefaultSource(QStringLiteral("vmic")))
            return;
    }
    qFatal("The sound server did not get ready");
}

void SoundServer::signalAll(int signal)
{
    for (const auto& process : m_processes)
        sendSignal(*process, signal);
}

void SoundServer::kill()
{
    signalAll(SIGKILL);
    for (const auto& process : m_processes)
        process->waitForFinished(patience);
    m_processes.clear();
    for (const char* const socket : {"pulse/native", "pipewire-0", "bus"})
        QFile::remove(m_folder.file(QString::fromLatin1(socket)));
}

void SoundServer::freeze()
{
    signalAll(SIGSTOP);
}

void SoundServer::thaw()
{
    signalAll(SIGCONT);
}

std::unique_ptr<QProcess> SoundServer::run(const QString& program, const QStringList& arguments) const
{
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(environment());
    process->setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process->start(program, arguments);
    if (!process->waitForStarted(patience))
        qFatal("%s could not be started", qPrintable(program));
    return process;
}

QString SoundServer::control(const QStringList& arguments) const
{
    const auto pactl = run(QStringLiteral("pactl"), arguments);
    if (!pactl->waitForFinished(patience) || pactl->exitCode() != 0) {
        qFatal("pactl %s: %s", qPrintable(arguments.join(u' ')), pactl->readAllStandardError().constData());
    }
    return QString::fromUtf8(pactl->readAllStandardOutput());
}

int SoundServer::openMicrophones() const
{
    const QString outputs =
        control({QStringLiteral("list"), QStringLiteral("short"), QStringLiteral("source-outputs")});
    int streams = 0;
    for (const QString& line : outputs.split(u'\n', Qt::SkipEmptyParts)) {
        // A remapped source holds its master open with a stream of no client.
        if (line.split(u'\t').value(2) != QStringLiteral("-"))
            ++streams;
    }
    return streams;
}

std::unique_ptr<QProcess> SoundServer::play(std::span<const float> interleaved, int rate, int channels)
{
    const QByteArray bytes(reinterpret_cast<const char*>(interleaved.data()),
                           static_cast<qsizetype>(interleaved.size_bytes()));
    const QString file = m_folder.write(QStringLiteral("played-%1.raw").arg(++m_played), bytes);
    return run(QStringLiteral("paplay"),
               {QStringLiteral("--raw"), QStringLiteral("--format=float32le"),
                QStringLiteral("--rate=%1").arg(rate), QStringLiteral("--channels=%1").arg(channels),
                QStringLiteral("--device=micsink"), file});
}

std::unique_ptr<QProcess> SoundServer::play(const QString& file)
{
    return run(QStringLiteral("paplay"), {QStringLiteral("--device=micsink"), file});
}

std::unique_ptr<QProcess> SoundServer::record(const QString& source) const
{
    return run(QStringLiteral("parec"),
               {QStringLiteral("--raw"), QStringLiteral("--format=float32le"), QStringLiteral("--rate=48000"),
                QStringLiteral("--channels=2"), QStringLiteral("--latency-msec=10"),
                QStringLiteral("--device=") + source});
}

} // namespace tulvane::test
