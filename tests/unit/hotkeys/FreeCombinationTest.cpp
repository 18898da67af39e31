#include <hotkeys/FreeCombination.h>
#include <platform/KeyModifiers.h>
#include <platform/fake/FakeGlobalHotKeys.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination controlAltSpace{49, carbon::control | carbon::option};
constexpr KeyCombination controlAltD{2, carbon::control | carbon::option};

TEST(FreeCombinationTest, IsTheEasiestThatNobodyHolds)
{
    FakeGlobalHotKeys hotKeys;
    EXPECT_EQ(freeCombination(hotKeys), altSpace);
    hotKeys.takeElsewhere(altSpace);
    EXPECT_EQ(freeCombination(hotKeys), controlAltSpace);
    hotKeys.takeElsewhere(controlAltSpace);
    EXPECT_EQ(freeCombination(hotKeys), controlAltD);
}

TEST(FreeCombinationTest, IsHeldByNobodyAfterwards)
{
    FakeGlobalHotKeys hotKeys;
    ASSERT_TRUE(freeCombination(hotKeys));
    EXPECT_TRUE(hotKeys.registered().isEmpty());
}

TEST(FreeCombinationTest, IsNoneThatTheDesktopOrAMenuUses)
{
    FakeGlobalHotKeys hotKeys;
    hotKeys.setSymbolicHotKeys({{true, altSpace, {}}});
    const auto menuItemOf = [](const KeyCombination& combination) {
        return combination == controlAltSpace ? std::optional(QStringLiteral("Quit")) : std::nullopt;
    };
    EXPECT_EQ(freeCombination(hotKeys, menuItemOf), controlAltD);
}

TEST(FreeCombinationTest, ThereIsNoneWhereNothingCanBeRegistered)
{
    FakeGlobalHotKeys hotKeys;
    hotKeys.failRegistrations(HotKeyError::refused(4));
    EXPECT_EQ(freeCombination(hotKeys), std::nullopt);
    hotKeys.failRegistrations(HotKeyError::unsupported(QStringLiteral("not here")));
    const int attempts = hotKeys.attempts();
    EXPECT_EQ(freeCombination(hotKeys), std::nullopt);
    EXPECT_EQ(hotKeys.attempts(), attempts) << "a desktop without hot keys is not asked for one";
}

} // namespace

} // namespace tulvane
