#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

namespace tulvane {

/// How long ago an event happened, by the X server's time in it: a busy program handles a key late, and would
/// take a tap for a hold by its own clock. A server of this machine counts the milliseconds of the monotonic
/// clock; of any other, the promptest event so far tells how the clocks differ. A plain value.
class ServerTime final {
public:
    /// `time` as in the event, `now` of the monotonic clock.
    [[nodiscard]] std::chrono::milliseconds
    age(quint32 time, std::chrono::steady_clock::time_point now = std::chrono::steady_clock::now());

private:
    std::optional<quint32> m_difference; ///< of the clocks, in milliseconds; both wrap
};

} // namespace tulvane
