#include <platform/linux/session/WaylandOffers.h>

#include <gtest/gtest.h>

namespace tulvane::test {

TEST(WaylandOffers, ThePortalIsAskedOnlyWhereNothingElsePressesKeys)
{
    EXPECT_FALSE(WaylandOffers().asksForKeys());
    const WaylandOffers portal{.remoteDesktopPortal = true};
    EXPECT_TRUE(portal.asksForKeys());
    for (bool WaylandOffers::* const better :
         {&WaylandOffers::virtualKeyboard, &WaylandOffers::fakeInput, &WaylandOffers::mutterRemoteControl}) {
        WaylandOffers offers = portal;
        offers.*better = true;
        EXPECT_FALSE(offers.asksForKeys());
    }
}

} // namespace tulvane::test
