#pragma once

#include <ports/ScreenLock.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace tulvane::test {

/// A desktop whose screen the test locks. Throws when it does not start.
class ScreenLockWorld {
public:
    ScreenLockWorld() = default;
    ScreenLockWorld(const ScreenLockWorld&) = delete;
    ScreenLockWorld& operator=(const ScreenLockWorld&) = delete;
    virtual ~ScreenLockWorld() = default;

    [[nodiscard]] virtual ScreenLock& lock() = 0;
    virtual void setLocked(bool locked) = 0;
};

struct ScreenLockWorldFactory {
    const char* name;
    std::function<std::unique_ptr<ScreenLockWorld>(bool locked)> make;
};

class ScreenLockContract : public testing::TestWithParam<ScreenLockWorldFactory> {};

inline void PrintTo(const ScreenLockWorldFactory& factory, std::ostream* out)
{
    *out << factory.name;
}

} // namespace tulvane::test
