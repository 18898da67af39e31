#include <support/Signals.h>

#include <QProcess>

#include <csignal>

namespace tulvane::test {

void sendSignal(qint64 process, int signal)
{
    if (process > 0)
        ::kill(static_cast<pid_t>(process), signal);
}

void sendSignal(const QProcess& process, int signal)
{
    sendSignal(process.processId(), signal);
}

} // namespace tulvane::test
