#pragma once

#include <base/Result.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <chrono>
#include <memory>

namespace tulvane {

/// Why a helper gave no message.
enum class HelperFailure {
    ended,  ///< it has ended or crashed, or was never started
    silent, ///< it runs, and said nothing in the given time
};

/// A program of our own that runs beside this process and trades messages with it. What it loads, and what
/// becomes of that, stays in it: a crash or a hang there costs this process nothing. It is killed with this
/// object, and ends with this process. One thread at a time; the object is made, used and destroyed on the
/// same thread, and every call may block it.
class HelperProcess {
public:
    HelperProcess() = default;
    HelperProcess(const HelperProcess&) = delete;
    HelperProcess& operator=(const HelperProcess&) = delete;
    virtual ~HelperProcess() = default;

    /// Hands over a message; false when the helper has ended, or took nothing of it for the given time.
    [[nodiscard]] virtual bool send(const QByteArray& message, std::chrono::milliseconds limit) = 0;
    /// The next message of the helper's, waited for at most so long.
    [[nodiscard]] virtual Result<QByteArray, HelperFailure> receive(std::chrono::milliseconds limit) = 0;
    /// What became of it, for the log: "runs", "ended with the status 3", "crashed".
    [[nodiscard]] virtual QString state() const = 0;
};

/// Starts helpers. Any thread.
class HelperProcesses {
public:
    HelperProcesses() = default;
    HelperProcesses(const HelperProcesses&) = delete;
    HelperProcesses& operator=(const HelperProcesses&) = delete;
    virtual ~HelperProcesses() = default;

    /// The program (an absolute path) as a helper: its standard input and output carry the messages, each as
    /// `framed` makes them; what it writes to standard error is lost. Never null: a helper that could not be
    /// started is one that has ended.
    [[nodiscard]] virtual std::unique_ptr<HelperProcess> start(const QString& program,
                                                               const QStringList& arguments) const = 0;
};

} // namespace tulvane
