#pragma once

#include <QObject>
#include <QSocketNotifier>

#include <array>
#include <functional>
#include <optional>

namespace tulvane::cli {

/// Reports that the user wants to stop: Enter, Ctrl+C, or the process being asked to end. While it lives, the
/// first SIGINT and the first SIGTERM do not end the process; the second does. One at a time; main thread.
class InterruptWatcher final {
public:
    /// `input` is the descriptor whose lines count as Enter; its end does not. Negative: only signals count.
    InterruptWatcher(int input, std::function<void()> stop);
    InterruptWatcher(const InterruptWatcher&) = delete;
    InterruptWatcher& operator=(const InterruptWatcher&) = delete;
    ~InterruptWatcher();

private:
    void readSignals();
    void readInput();

    int m_input;
    std::function<void()> m_stop;
    std::array<int, 2> m_pipe{-1, -1}; ///< a signal handler may do little more than write to it
    std::optional<QSocketNotifier> m_signals;
    std::optional<QSocketNotifier> m_lines;
};

} // namespace tulvane::cli
