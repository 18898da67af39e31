#pragma once

#include <QDir>
#include <QFile>

#include <malloc.h>
#include <time.h>

namespace tulvane::test {

/// What this process holds.
struct Footprint {
    std::size_t heap = 0;     ///< bytes that are allocated and not freed
    std::size_t resident = 0; ///< bytes of memory
    qsizetype descriptors = 0;
    qsizetype threads = 0;

    [[nodiscard]] static Footprint now()
    {
        malloc_trim(0);
        QFile file(QStringLiteral("/proc/self/statm"));
        const bool isOpen = file.open(QIODevice::ReadOnly);
        const std::size_t pages = isOpen ? file.readAll().split(' ').value(1).toULongLong() : 0;
        file.close();
        return {mallinfo2().uordblks + mallinfo2().hblkhd, pages * 4096, entries("/proc/self/fd"),
                entries("/proc/self/task")};
    }

private:
    static qsizetype entries(const char* folder)
    {
        return static_cast<qsizetype>(QDir(QString::fromUtf8(folder))
                                          .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
                                          .size());
    }
};

/// Milliseconds of processor time that the calling thread has used: other programs do not count.
[[nodiscard]] inline double processorTime()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

} // namespace tulvane::test
