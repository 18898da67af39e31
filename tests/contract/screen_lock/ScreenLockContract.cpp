#include "ScreenLockWorld.h"

#include <support/Await.h>

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace tulvane::test {

TEST_P(ScreenLockContract, IsOpenAtFirstAndFollowsEachChangeOnce)
{
    const auto world = GetParam().make(false);
    ScreenLock& lock = world->lock();
    std::vector<bool> changes;
    lock.setChangeHandler([&](bool locked) {
        EXPECT_EQ(lock.isLocked(), locked);
        changes.push_back(locked);
    });
    EXPECT_FALSE(lock.isLocked());
    world->setLocked(true);
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    world->setLocked(true);
    world->setLocked(false);
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));
    EXPECT_THAT(changes, ElementsAre(true, false));
}

TEST_P(ScreenLockContract, OneThatIsLockedAlreadyIsFoundSo)
{
    const auto world = GetParam().make(true);
    ScreenLock& lock = world->lock();
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    world->setLocked(false);
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));
}

TEST_P(ScreenLockContract, AnEmptyHandlerIsNeverCalled)
{
    const auto world = GetParam().make(false);
    ScreenLock& lock = world->lock();
    int changes = 0;
    lock.setChangeHandler([&](bool) { ++changes; });
    lock.setChangeHandler({});
    world->setLocked(true);
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    EXPECT_EQ(changes, 0);
}

} // namespace tulvane::test
