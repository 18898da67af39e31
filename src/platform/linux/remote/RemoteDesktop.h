#pragma once

#include <base/async/Lifetime.h>

#include <QCoroTask>
#include <QList>
#include <QString>

#include <chrono>

namespace tulvane {

class BusLink;

/// A desktop's service that takes keys of a program as if they were the user's, in sessions. Main thread,
/// which no call blocks; each ends in bounded time.
class RemoteDesktop {
public:
    RemoteDesktop() = default;
    RemoteDesktop(const RemoteDesktop&) = delete;
    RemoteDesktop& operator=(const RemoteDesktop&) = delete;
    virtual ~RemoteDesktop() = default;

    /// The path of a session whose keys arrive; empty where there is none to be had. Asks the user nothing.
    [[nodiscard]] virtual QCoro::Task<QString> open() = 0;
    /// No more keys are coming in this session for now. Nothing for an empty path.
    virtual QCoro::Task<> close(QString session) = 0;
    /// False where the session does not take the key. `evdev` is the Linux kernel's number of it.
    [[nodiscard]] virtual QCoro::Task<bool> key(QString session, quint32 evdev, bool isDown) = 0;
    /// Waits until the service has come to every key before.
    virtual QCoro::Task<> catchUp(QString session) = 0;
    /// Keys that are let go of before others are pressed, so that what the user holds down does not join
    /// them; empty where that would do nothing.
    [[nodiscard]] virtual QList<quint32> keysToLetGo() const { return {}; }

    /// Presses the key and lets go of it, asked for both at once: a key that is held too long repeats. False
    /// where either was not taken.
    [[nodiscard]] QCoro::Task<bool> tap(QString session, quint32 evdev);
    /// Waits until the compositor has handed the last key on to the program in front: `time`, and until the
    /// service has come to what was asked of it. Ends early with `caller`, in whose `waits` it waits.
    QCoro::Task<> handOn(QString session, std::chrono::milliseconds time, BusLink& waits,
                         Lifetime::Guard caller);

protected:
    /// The first key of a new keyboard may be lost. This one has nothing on it in any layout: a Shift, while
    /// the user still holds Alt, would change the layout on some desktops.
    static constexpr quint32 emptyKey = 240;
    /// Until a new keyboard's keys arrive.
    static constexpr std::chrono::milliseconds settlingTime{50};
};

} // namespace tulvane
