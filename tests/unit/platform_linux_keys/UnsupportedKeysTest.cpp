#include <platform/KeyModifiers.h>
#include <platform/linux/keys/UnsupportedKeys.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

const QString reason = QStringLiteral("not here, because");

TEST(UnsupportedHotKeys, SayWhyAndStillWriteCombinations)
{
    UnsupportedHotKeys hotKeys(reason);
    hotKeys.setEventHandler([](const HotKeyEvent&) { return HotKeyDelivery::handled; });
    hotKeys.setChangeHandler([] {});
    EXPECT_EQ(hotKeys.support().error(), HotKeyError::unsupported(reason));
    EXPECT_EQ(hotKeys.registerHotKey({1, 1}, {49, carbon::option}).error(), HotKeyError::unsupported(reason));
    EXPECT_TRUE(hotKeys.symbolicHotKeys({49, carbon::option}).isEmpty());
    EXPECT_EQ(hotKeys.display({49, carbon::option}).text(), QStringLiteral("Alt+Space"));
    EXPECT_EQ(hotKeys.combination({65, 0, 0}), std::nullopt);
}

TEST(UnsupportedModifierEvents, SayWhy)
{
    UnsupportedModifierEvents events(reason);
    EXPECT_EQ(events.createTap(61, [](const ModifierEvent&) {}).error(),
              ModifierEventsError::unsupported(reason));
}

} // namespace

} // namespace tulvane
