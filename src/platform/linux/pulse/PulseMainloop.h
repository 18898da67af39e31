#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

struct pa_mainloop_api;
struct pa_threaded_mainloop;

namespace tulvane {

/// libpulse's thread: the audio thread. All callbacks run on it with this lock held; everyone else holds the
/// lock around each use of a libpulse object. Must not be locked from within a callback.
class PulseMainloop final {
public:
    PulseMainloop();
    PulseMainloop(const PulseMainloop&) = delete;
    PulseMainloop& operator=(const PulseMainloop&) = delete;
    /// Ends the thread. Without the lock, when nothing runs on the loop any more.
    ~PulseMainloop();

    /// Lower case, as the standard's locks need it.
    void lock();
    void unlock();

    [[nodiscard]] pa_mainloop_api* api() const;

    /// Gives the lock up until `done` holds, at most for `limit`. `done` is asked with the lock held, at once
    /// and after each `wake`. Whether it holds in the end.
    template <class Predicate>
    [[nodiscard]] bool waitFor(std::unique_lock<PulseMainloop>& lock, std::chrono::milliseconds limit,
                               Predicate done)
    {
        return m_wake.wait_for(lock, limit, done);
    }
    /// From a callback: something that another thread may be waiting for has happened.
    void wake() { m_wake.notify_all(); }

private:
    pa_threaded_mainloop* m_loop;
    std::condition_variable_any m_wake;
};

using PulseLock = std::unique_lock<PulseMainloop>;

} // namespace tulvane
