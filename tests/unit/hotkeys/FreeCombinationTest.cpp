#include <hotkeys/FreeCombination.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <ports/KeyModifiers.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

constexpr KeyCombination altSpace{49, carbon::option};
constexpr KeyCombination controlAltSpace{49, carbon::control | carbon::option};
constexpr KeyCombination controlAltD{2, carbon::control | carbon::option};

TEST(FreeCombinationTest, IsTheEasiestThatNobodyHolds)
{
    FakeGlobalHotkeys hotkeys;
    EXPECT_EQ(freeCombination(hotkeys), altSpace);
    hotkeys.takeElsewhere(altSpace);
    EXPECT_EQ(freeCombination(hotkeys), controlAltSpace);
    hotkeys.takeElsewhere(controlAltSpace);
    EXPECT_EQ(freeCombination(hotkeys), controlAltD);
}

TEST(FreeCombinationTest, GoesFromLettersAndTheSpaceBarToFunctionKeysAndThenGivesUp)
{
    constexpr quint32 f8 = 100;
    constexpr quint32 f9 = 101;
    FakeGlobalHotkeys hotkeys;
    for (const KeyCombination& next :
         {altSpace, controlAltSpace, controlAltD, KeyCombination{49, carbon::command | carbon::option},
          KeyCombination{2, carbon::command | carbon::option}, KeyCombination{f9, 0},
          KeyCombination{f8, 0}}) {
        ASSERT_EQ(freeCombination(hotkeys), next);
        hotkeys.takeElsewhere(next);
    }
    EXPECT_EQ(freeCombination(hotkeys), std::nullopt);
}

TEST(FreeCombinationTest, IsHeldByNobodyAfterwards)
{
    FakeGlobalHotkeys hotkeys;
    ASSERT_TRUE(freeCombination(hotkeys));
    EXPECT_TRUE(hotkeys.registered().isEmpty());
}

TEST(FreeCombinationTest, IsNoneThatTheDesktopOrAMenuUses)
{
    FakeGlobalHotkeys hotkeys;
    hotkeys.setSymbolicHotkeys({{true, altSpace, {}}});
    const auto menuItemOf = [](const KeyCombination& combination) {
        return combination == controlAltSpace ? std::optional(QStringLiteral("Quit")) : std::nullopt;
    };
    EXPECT_EQ(freeCombination(hotkeys, menuItemOf), controlAltD);
}

TEST(FreeCombinationTest, ThereIsNoneWhereNothingCanBeRegistered)
{
    FakeGlobalHotkeys hotkeys;
    hotkeys.failRegistrations(HotkeyError::refused(4));
    EXPECT_EQ(freeCombination(hotkeys), std::nullopt);
    hotkeys.failRegistrations(HotkeyError::unsupported(QStringLiteral("not here")));
    const int attempts = hotkeys.attempts();
    EXPECT_EQ(freeCombination(hotkeys), std::nullopt);
    EXPECT_EQ(hotkeys.attempts(), attempts) << "a desktop without hot keys is not asked for one";
}

} // namespace

} // namespace tulvane
