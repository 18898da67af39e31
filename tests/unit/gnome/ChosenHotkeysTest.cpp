#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/linux/gnome/ChosenHotkeys.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

constexpr KeyCombination combination{virtualKeys::space, carbon::option};

} // namespace

TEST(ChosenHotkeys, NoneIsAskedForThatTheUserHasNotChosen)
{
    const auto desktop = std::make_shared<FakeGlobalHotkeys>();
    bool isMade = false;
    ChosenHotkeys hotkeys(desktop, {.isMade = [&](const KeyCombination&) { return isMade; },
                                    .make = [&](const KeyCombination&) { isMade = true; }});
    const auto refused = hotkeys.registerHotkey({1, 1}, combination);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error(), HotkeyError::unchosen());
    EXPECT_EQ(desktop->attempts(), 0);

    hotkeys.choose(combination);
    const auto registered = hotkeys.registerHotkey({1, 1}, combination);
    ASSERT_TRUE(registered);
    EXPECT_TRUE(desktop->isRegistered(combination));
}

TEST(ChosenHotkeys, BothEdgesComeThrough)
{
    const auto desktop = std::make_shared<FakeGlobalHotkeys>();
    ChosenHotkeys hotkeys(desktop, {});
    int events = 0;
    hotkeys.setEventHandler([&](const HotkeyEvent&) {
        ++events;
        return HotkeyDelivery::handled;
    });
    const auto registered = hotkeys.registerHotkey({1, 1}, combination);
    ASSERT_TRUE(registered);
    desktop->press(combination);
    desktop->release(combination);
    EXPECT_EQ(events, 2);
}

} // namespace tulvane::test
