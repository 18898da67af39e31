#include <app/cli/InterruptWatcher.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstring>

namespace tulvane::cli {

namespace {

volatile std::sig_atomic_t signalPipe = -1;

void noteSignal(int)
{
    const char byte = 1;
    if (signalPipe >= 0)
        static_cast<void>(!write(static_cast<int>(signalPipe), &byte, 1));
}

void handleSignals(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    // The second one ends the process, whatever it is waiting for.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int number : {SIGINT, SIGTERM})
        sigaction(number, &action, nullptr);
}

} // namespace

InterruptWatcher::InterruptWatcher(int input, std::function<void()> stop)
    : m_input(input),
      m_stop(std::move(stop))
{
    if (pipe(m_pipe.data()) != 0)
        qFatal("no pipe: %s", std::strerror(errno));
    for (const int end : m_pipe)
        fcntl(end, F_SETFD, FD_CLOEXEC);
    signalPipe = m_pipe[1];
    m_signals.emplace(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(&*m_signals, &QSocketNotifier::activated, &*m_signals, [this] { readSignals(); });
    handleSignals(noteSignal);

    if (m_input < 0)
        return;
    m_lines.emplace(m_input, QSocketNotifier::Read);
    QObject::connect(&*m_lines, &QSocketNotifier::activated, &*m_lines, [this] { readInput(); });
}

InterruptWatcher::~InterruptWatcher()
{
    handleSignals(SIG_DFL);
    signalPipe = -1;
    m_signals.reset();
    for (const int end : m_pipe)
        close(end);
}

void InterruptWatcher::readSignals()
{
    std::array<char, 16> bytes{};
    if (read(m_pipe[0], bytes.data(), bytes.size()) > 0)
        m_stop();
}

void InterruptWatcher::readInput()
{
    std::array<char, 256> bytes{};
    const ssize_t count = read(m_input, bytes.data(), bytes.size());
    if (count <= 0) {
        m_lines->setEnabled(false);
        return;
    }
    if (std::memchr(bytes.data(), '\n', static_cast<std::size_t>(count)) != nullptr)
        m_stop();
}

} // namespace tulvane::cli
