#include "ScreenLockWorld.h"

#include <platform/fake/FakeScreenLock.h>

namespace tulvane::test {

namespace {

class FakeWorld final : public ScreenLockWorld {
public:
    explicit FakeWorld(bool locked) { m_lock.setLocked(locked); }
    [[nodiscard]] ScreenLock& lock() override { return m_lock; }
    void setLocked(bool locked) override { m_lock.setLocked(locked); }

private:
    FakeScreenLock m_lock;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, ScreenLockContract,
                         testing::Values(ScreenLockWorldFactory{
                             "Fake", [](bool locked) { return std::make_unique<FakeWorld>(locked); }}));

} // namespace tulvane::test
