#include <base/MessageFrame.h>
#include <platform/linux/process/PipedProcesses.h>

#include <QDeadlineTimer>
#include <QProcess>

#include <sys/prctl.h>

#include <csignal>

namespace tulvane {

namespace {

class PipedProcess final : public HelperProcess {
public:
    PipedProcess(const QString& program, const QStringList& arguments)
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
        m_process.start(program, arguments);
        m_process.waitForStarted(-1);
    }
    PipedProcess(const PipedProcess&) = delete;
    PipedProcess& operator=(const PipedProcess&) = delete;
    ~PipedProcess() override
    {
        m_process.kill();
        // A driver that hangs in the kernel keeps even a killed process for a while, and a destroyed QProcess
        // waits for half a minute.
        m_process.waitForFinished(1000);
    }

    [[nodiscard]] bool send(const QByteArray& message, std::chrono::milliseconds limit) override
    {
        const QDeadlineTimer end(limit);
        if (!runs() || m_process.write(framed(message)) < 0)
            return false;
        while (m_process.bytesToWrite() > 0) {
            if (!m_process.waitForBytesWritten(static_cast<int>(end.remainingTime())))
                return false;
        }
        return true;
    }

    [[nodiscard]] Result<QByteArray, HelperFailure> receive(std::chrono::milliseconds limit) override
    {
        const QDeadlineTimer end(limit);
        for (;;) {
            m_frames.add(m_process.readAllStandardOutput());
            if (auto message = m_frames.next())
                return *std::move(message);
            if (!runs() || m_frames.isBroken())
                return failure(HelperFailure::ended);
            if (end.hasExpired())
                return failure(HelperFailure::silent);
            m_process.waitForReadyRead(static_cast<int>(end.remainingTime()));
        }
    }

    [[nodiscard]] QString state() const override
    {
        if (runs())
            return QStringLiteral("runs");
        if (m_process.error() == QProcess::FailedToStart)
            return QStringLiteral("was not started: ") + m_process.errorString();
        return m_process.exitStatus() == QProcess::CrashExit
                   ? QStringLiteral("crashed")
                   : QStringLiteral("ended with the status %1").arg(m_process.exitCode());
    }

private:
    [[nodiscard]] bool runs() const { return m_process.state() == QProcess::Running; }

    QProcess m_process;
    MessageFrames m_frames;
};

} // namespace

std::unique_ptr<HelperProcess> PipedProcesses::start(const QString& program,
                                                     const QStringList& arguments) const
{
    return std::make_unique<PipedProcess>(program, arguments);
}

} // namespace tulvane
