#include <hotkeys/ShortcutRules.h>
#include <hotkeys/ShortcutTexts.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <ports/KeyModifiers.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

using Verdict = ShortcutRules::Verdict;

constexpr quint32 letterD = 2;
constexpr quint32 f5 = 96;

class ShortcutRulesTest : public testing::Test {
protected:
    [[nodiscard]] Verdict verdict(quint32 keyCode, quint32 modifiers) const
    {
        return ShortcutRules(m_hotkeys).judge({keyCode, modifiers}).verdict;
    }

    mutable FakeGlobalHotkeys m_hotkeys;
};

TEST_F(ShortcutRulesTest, ACombinationNeedsCommandControlOrOption)
{
    for (const quint32 modifier : {carbon::command, carbon::control, carbon::option}) {
        EXPECT_EQ(verdict(letterD, modifier), Verdict::accepted);
        EXPECT_EQ(verdict(letterD, modifier | carbon::shift), Verdict::accepted);
        EXPECT_EQ(verdict(49, modifier), Verdict::accepted);
    }
    EXPECT_EQ(verdict(letterD, carbon::control | carbon::option), Verdict::accepted);
    EXPECT_EQ(verdict(letterD, 0), Verdict::notACombination);
    EXPECT_EQ(verdict(letterD, carbon::shift), Verdict::notACombination);
    EXPECT_EQ(verdict(49, carbon::shift), Verdict::notACombination);
}

TEST_F(ShortcutRulesTest, AFunctionKeyNeedsNothing)
{
    EXPECT_EQ(verdict(f5, 0), Verdict::accepted);
    EXPECT_EQ(verdict(f5, carbon::shift), Verdict::accepted);
}

TEST_F(ShortcutRulesTest, AModifierByItselfIsNone)
{
    EXPECT_EQ(verdict(63, 0), Verdict::notACombination) << "fn";
    EXPECT_EQ(verdict(56, carbon::shift), Verdict::notACombination) << "Shift";
    EXPECT_EQ(verdict(58, carbon::option), Verdict::notACombination) << "Option";
}

TEST_F(ShortcutRulesTest, WhatAMenuItemUsesIsRefused)
{
    const ShortcutRules rules(m_hotkeys, [](const KeyCombination& combination) {
        return combination == KeyCombination{12, carbon::command}
                   ? std::optional(QStringLiteral("Quit Tulvane"))
                   : std::nullopt;
    });
    const auto answer = rules.judge({12, carbon::command});
    EXPECT_EQ(answer.verdict, Verdict::refused);
    EXPECT_EQ(answer.message,
              QStringLiteral("The menu item “Quit Tulvane” already uses this key combination."));
    EXPECT_EQ(rules.judge({12, carbon::option}).verdict, Verdict::accepted);
}

TEST_F(ShortcutRulesTest, WhatTheSystemUsesIsRefused)
{
    const KeyCombination used{49, carbon::command};
    m_hotkeys.setSymbolicHotkeys({{true, used, {}}, {false, {49, carbon::option}, {}}});
    const auto answer = ShortcutRules(m_hotkeys).judge(used);
    EXPECT_EQ(answer.verdict, Verdict::refused);
    EXPECT_EQ(answer.message,
              QStringLiteral("The system already uses this key combination. What the system uses "
                             "can be changed in its keyboard settings."));
    EXPECT_EQ(verdict(49, carbon::option), Verdict::accepted) << "switched off in the system";
    EXPECT_EQ(verdict(49, carbon::command | carbon::shift), Verdict::accepted);
    EXPECT_EQ(verdict(letterD, carbon::command), Verdict::accepted);
}

TEST_F(ShortcutRulesTest, WhatProgramsCopyAndPasteWithIsRefused)
{
    constexpr quint32 c = 8;
    constexpr quint32 v = 9;
    constexpr quint32 y = 16;
    constexpr quint32 insert = 114;
    for (const KeyCombination& taken :
         {KeyCombination{v, carbon::control}, KeyCombination{v, carbon::control | carbon::shift},
          KeyCombination{v, carbon::command}, KeyCombination{c, carbon::control},
          KeyCombination{c, carbon::control | carbon::shift}, KeyCombination{insert, carbon::shift},
          KeyCombination{insert, carbon::control}, KeyCombination{y, carbon::control}}) {
        const auto answer = ShortcutRules(m_hotkeys).judge(taken);
        EXPECT_EQ(answer.verdict, Verdict::refused) << taken.keyCode << ' ' << taken.modifiers;
        EXPECT_EQ(answer.message,
                  QStringLiteral("Programs copy or paste with this key combination, and dictated "
                                 "texts are pasted."));
    }
    EXPECT_EQ(verdict(v, carbon::option), Verdict::accepted);
    EXPECT_EQ(verdict(c, carbon::control | carbon::option), Verdict::accepted);
    EXPECT_EQ(verdict(insert, carbon::option), Verdict::accepted);
    EXPECT_EQ(verdict(y, carbon::control | carbon::shift), Verdict::accepted);
}

TEST(ShortcutTexts, AreFoundUnderTheirKeys)
{
    using namespace shortcutTexts;
    EXPECT_STREQ(usedByMenuItem.localizationKey, "keyboard_shortcut_used_by_menu_item");
    EXPECT_STREQ(usedBySystem.localizationKey, "keyboard_shortcut_used_by_system");
    EXPECT_STREQ(canBeChanged.localizationKey, "keyboard_shortcuts_can_be_changed");
    EXPECT_STREQ(recordShortcut.localizationKey, "record_shortcut");
    EXPECT_STREQ(pressShortcut.localizationKey, "press_shortcut");
}

TEST(ShortcutTexts, ExplainTheField)
{
    using namespace shortcutTexts;
    EXPECT_EQ(howToRecord.text(),
              QStringLiteral(
                  "Click the field, then press the whole combination at once, for example ⌥ Space or ⌃⌥ D."));
    EXPECT_EQ(whatIsAccepted.text(),
              QStringLiteral(
                  "It must include ⌘, ⌃ or ⌥, or be a function key such as F5. Letters alone, ⇧ alone and "
                  "fn alone are not accepted – the field just beeps."));
    EXPECT_EQ(howToClear.text(),
              QStringLiteral("Backspace clears the field. To use fn or right ⌥ on its own, choose "
                             "“Hold a single key” above."));
}

} // namespace

} // namespace tulvane
