#include <platform/linux/session/NullHotkeys.h>
#include <platform/linux/session/NullModifierEvents.h>
#include <ports/KeyModifiers.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

const QString reason = QStringLiteral("not here, because");

TEST(NullHotkeys, SayWhyAndStillWriteCombinations)
{
    NullHotkeys hotkeys(reason);
    hotkeys.setEventHandler([](const HotkeyEvent&) { return HotkeyDelivery::handled; });
    hotkeys.setChangeHandler([] {});
    EXPECT_EQ(hotkeys.support().error(), HotkeyError::unsupported(reason));
    EXPECT_EQ(hotkeys.registerHotkey({1, 1}, {49, carbon::option}).error(), HotkeyError::unsupported(reason));
    EXPECT_TRUE(hotkeys.symbolicHotkeys({49, carbon::option}).isEmpty());
    EXPECT_EQ(hotkeys.display({49, carbon::option}).text(), QStringLiteral("Alt+Space"));
    EXPECT_EQ(hotkeys.combination({65, 0, 0}), std::nullopt);
}

TEST(NullModifierEvents, SayWhy)
{
    NullModifierEvents events(reason);
    EXPECT_EQ(events.createTap(61, [](const ModifierEvent&) {}).error(),
              ModifierEventsError::unsupported(reason));
}

} // namespace

} // namespace tulvane
