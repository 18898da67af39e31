#include "DeviceWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace tulvane::test {

namespace {

template <class World>
class DeviceKeyPostingTest : public testing::Test {
protected:
    void SetUp() override
    {
        if constexpr (requires { World::desktopKind; }) {
            TULVANE_NEEDS(World::desktopKind);
        }
        m_world.emplace();
    }
    std::optional<World> m_world; ///< made once it is known that its packages are there
};

using Worlds = testing::Types<SwayKeysWorld, KWinKeysWorld>;
TYPED_TEST_SUITE(DeviceKeyPostingTest, Worlds);

} // namespace

TYPED_TEST(DeviceKeyPostingTest, AModifierThatTheUserHoldsDoesNotJoinThePaste)
{
    constexpr int leftAlt = 56;
    this->m_world->desktop().down({leftAlt});
    EXPECT_TRUE(await(this->m_world->keys().paste(this->m_world->front())));
    EXPECT_TRUE(waitUntil([&] { return this->m_world->pastes() == 1; }));
    this->m_world->desktop().up({leftAlt});
    EXPECT_THAT(this->m_world->typed(), testing::ElementsAre(u"paste"_qs));
}

TYPED_TEST(DeviceKeyPostingTest, PastesWithTheOtherChordToo)
{
    PasteTarget target = this->m_world->front();
    target.chord = PasteChord::shiftInsert;
    EXPECT_TRUE(await(this->m_world->keys().paste(target)));
    EXPECT_THAT(this->m_world->typed(), testing::ElementsAre(u"paste"_qs));
}

TYPED_TEST(DeviceKeyPostingTest, SaysWhenTheChordGoesOutAndOnlyThen)
{
    PasteTarget target = this->m_world->front();
    EXPECT_TRUE(await(this->m_world->keys().paste(target)));
    EXPECT_EQ(this->m_world->chordsOut(), 1);
    target.chord.key = u"no such key"_qs;
    EXPECT_FALSE(await(this->m_world->keys().paste(target)));
    EXPECT_EQ(this->m_world->chordsOut(), 1);
}

} // namespace tulvane::test
