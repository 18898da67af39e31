// Loaded before the C library, it lets the wall clock of a program jump: by as many seconds as the first
// eight bytes of the file say that TULVANE_TEST_CLOCK names, at the moment at which a test writes them. What
// only goes forward stays as it is.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/time.h>
#include <time.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <cstdlib>

namespace {

using Shift = std::atomic<std::int64_t>;

const Shift* mapShift()
{
    const char* const name = std::getenv("TULVANE_TEST_CLOCK");
    const int file = name == nullptr ? -1 : open(name, O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return nullptr;
    void* const memory = mmap(nullptr, sizeof(Shift), PROT_READ, MAP_SHARED, file, 0);
    close(file);
    return memory == MAP_FAILED ? nullptr : static_cast<const Shift*>(memory);
}

/// Seconds. Before anything has been loaded whole, programs ask for the time as well.
std::int64_t shift()
{
    static const Shift* const memory = mapShift();
    return memory == nullptr ? 0 : memory->load(std::memory_order_relaxed);
}

template <class Function>
Function original(const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define SHOWN extern "C" __attribute__((visibility("default")))

SHOWN int clock_gettime(clockid_t clock, timespec* time)
{
    static const auto real = original<int (*)(clockid_t, timespec*)>("clock_gettime");
    const int result = real(clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += shift();
    return result;
}

SHOWN int gettimeofday(timeval* time, void* zone)
{
    static const auto real = original<int (*)(timeval*, void*)>("gettimeofday");
    const int result = real(time, zone);
    if (result == 0 && time != nullptr)
        time->tv_sec += shift();
    return result;
}

SHOWN time_t time(time_t* result)
{
    static const auto real = original<time_t (*)(time_t*)>("time");
    const time_t shifted = real(nullptr) + shift();
    if (result != nullptr)
        *result = shifted;
    return shifted;
}
