#include <platform/linux/atspi/BusLink.h>
#include <platform/linux/remote/RemoteDesktop.h>

namespace tulvane {

QCoro::Task<bool> RemoteDesktop::tap(QString session, quint32 evdev)
{
    auto pressed = key(session, evdev, true);
    auto released = key(session, evdev, false);
    const bool isDown = co_await pressed;
    const bool isUp = co_await released;
    co_return isDown&& isUp;
}

QCoro::Task<> RemoteDesktop::handOn(QString session, std::chrono::milliseconds time, BusLink& waits,
                                    Lifetime::Guard caller)
{
    using std::chrono::milliseconds;
    // A busy compositor answers when it has come to it.
    for (const milliseconds wait : {time, milliseconds(1)}) {
        co_await waits.pause(wait);
        if (!caller)
            co_return;
        co_await catchUp(session);
        if (!caller)
            co_return;
    }
}

} // namespace tulvane
