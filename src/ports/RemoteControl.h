#pragma once

#include <base/Result.h>

#include <QFuture>
#include <QJsonObject>
#include <QString>

#include <functional>

namespace tulvane {

/// What another process may ask of the running program.
enum class RemoteRequest {
    start,    ///< begin a recording
    stop,     ///< end it and insert what was said
    toggle,   ///< whichever of the two fits
    cancel,   ///< abandon the recording
    status,   ///< how it stands
    doctor,   ///< what only the running program knows of its own health
    activate, ///< a second start: show yourself; the argument names a page
    quit,     ///< end; answered before the end
    settings, ///< a `settings` command, so that the change is live; the argument is a JSON array of its words
};

/// Why a request got no answer.
enum class RemoteError {
    notRunning,   ///< no process has claimed to be the running program
    noConnection, ///< there is no way to ask, as without a session bus
    noAnswer,     ///< the running program did not answer in time, or not sensibly
};

/// The way between the running program, of which there is one per user session, and the processes that want
/// something of it. Main thread.
class RemoteControl {
public:
    /// Answers one request; called from the event loop.
    using Answer = std::function<QJsonObject(RemoteRequest request, const QString& argument)>;

    enum class Claim {
        granted,    ///< this process is the running program from now on
        taken,      ///< another one is
        impossible, ///< there is no way to be asked anything; the program works all the same
    };

    RemoteControl() = default;
    RemoteControl(const RemoteControl&) = delete;
    RemoteControl& operator=(const RemoteControl&) = delete;
    virtual ~RemoteControl() = default;

    /// Becomes the running program, until this object is gone.
    [[nodiscard]] virtual Claim claim(Answer answer) = 0;
    /// Notifies every listener of another phase. Before a granted claim, does nothing.
    virtual void announcePhase(const QString& phase) = 0;
    /// Asks the running program; the future always finishes with a result, within five seconds. Nothing is
    /// started by asking.
    [[nodiscard]] virtual QFuture<Result<QJsonObject, RemoteError>> ask(RemoteRequest request,
                                                                        const QString& argument = {}) = 0;
};

} // namespace tulvane
