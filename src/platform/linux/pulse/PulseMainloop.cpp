#include <platform/linux/pulse/PulseMainloop.h>

#include <QtGlobal>

#include <pulse/thread-mainloop.h>

namespace tulvane {

PulseMainloop::PulseMainloop() : m_loop(pa_threaded_mainloop_new())
{
    // Before the thread is there: later the name would go to the thread that gives it, and the whole program
    // would be called so in every list of processes.
    pa_threaded_mainloop_set_name(m_loop, "tulvane-audio");
    // Fails only where the process may have no further thread or pipe, and then nothing else works either.
    if (m_loop == nullptr || pa_threaded_mainloop_start(m_loop) < 0)
        qFatal("The audio thread could not be started");
}

PulseMainloop::~PulseMainloop()
{
    pa_threaded_mainloop_stop(m_loop);
    pa_threaded_mainloop_free(m_loop);
}

void PulseMainloop::lock()
{
    pa_threaded_mainloop_lock(m_loop);
}

void PulseMainloop::unlock()
{
    pa_threaded_mainloop_unlock(m_loop);
}

pa_mainloop_api* PulseMainloop::api() const
{
    return pa_threaded_mainloop_get_api(m_loop);
}

} // namespace tulvane
