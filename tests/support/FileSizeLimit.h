#pragma once

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>

namespace tulvane::test {

/// While it lives, no file of this process can grow beyond so many bytes: a write there is cut short and the
/// next one fails, as on a full disk.
class FileSizeLimit final {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        set({.rlim_cur = bytes, .rlim_max = m_before.rlim_max});
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    ~FileSizeLimit()
    {
        set(m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    static void set(const rlimit& limit)
    {
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            std::abort();
    }

    rlimit m_before{};
    void (*m_handler)(int);
};

} // namespace tulvane::test
