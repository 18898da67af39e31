#include <hotkeys/Shortcut.h>
#include <hotkeys/ShortcutName.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

TEST(Shortcut, IsStoredAsJsonWithTwoKeys)
{
    EXPECT_EQ((Shortcut{49, 2048}.toJson()),
              QStringLiteral("{\"carbonKeyCode\":49,\"carbonModifiers\":2048}"));
    for (const Shortcut shortcut : {Shortcut{0, 0}, Shortcut{-1, 6400}, Shortcut{96, Q_INT64_C(1) << 60}})
        EXPECT_EQ(Shortcut::fromJson(shortcut.toJson()), shortcut);
}

TEST(Shortcut, IsReadWhateverTheOrderAndTheSpacing)
{
    const Shortcut expected{49, 2048};
    EXPECT_EQ(Shortcut::fromJson(QStringLiteral("{ \"carbonModifiers\" : 2048,\n\"carbonKeyCode\" : 49 }")),
              expected);
    EXPECT_EQ(
        Shortcut::fromJson(QStringLiteral("{\"carbonKeyCode\":49.0,\"carbonModifiers\":2048,\"more\":1}")),
        expected);
}

TEST(Shortcut, AnythingElseIsNoShortcut)
{
    for (const char* text :
         {"", "no", "{", "[49,2048]", "49", "{}", "{\"carbonKeyCode\":49}", "{\"carbonModifiers\":2048}",
          "{\"carbonKeyCode\":\"49\",\"carbonModifiers\":2048}",
          "{\"carbonKeyCode\":49.5,\"carbonModifiers\":2048}",
          "{\"carbonKeyCode\":1e300,\"carbonModifiers\":2048}",
          "{\"carbonKeyCode\":null,\"carbonModifiers\":true}",
          "{\"carbonkeycode\":49,\"carbonmodifiers\":2048}"})
        EXPECT_EQ(Shortcut::fromJson(QString::fromUtf8(text)), std::nullopt) << text;
}

TEST(Shortcut, TurnsWindowSystemFlagsIntoTheCarbonMask)
{
    const auto modifiers = [](quint64 flags) { return Shortcut::fromFlags(49, flags).carbonModifiers; };
    EXPECT_EQ(modifiers(0x20000), 0x200);
    EXPECT_EQ(modifiers(0x40000), 0x1000);
    EXPECT_EQ(modifiers(0x80000), 0x800);
    EXPECT_EQ(modifiers(0x100000), 0x100);
    EXPECT_EQ(modifiers(0x1E0000), 0x1B00);
    EXPECT_EQ(modifiers(0x10000 | 0x800000 | 0x20), 0)
        << "Caps Lock, fn and device bits are in no combination";
    EXPECT_EQ(Shortcut::fromFlags(49, 0).carbonKeyCode, 49);
}

TEST(Shortcut, OnlyNumbersOf32BitsCanBeRegistered)
{
    const qint64 largest = 0xFFFFFFFF;
    EXPECT_EQ((Shortcut{largest, largest}.combination()), (KeyCombination{0xFFFFFFFF, 0xFFFFFFFF}));
    EXPECT_EQ((Shortcut{largest + 1, 0}.combination()), std::nullopt);
    EXPECT_EQ((Shortcut{0, largest + 1}.combination()), std::nullopt);
    EXPECT_EQ((Shortcut{-1, 0}.combination()), std::nullopt);
    EXPECT_EQ((Shortcut{0, -1}.combination()), std::nullopt);
}

TEST(Shortcut, DictationIsOptionSpaceUnlessTheUserChooses)
{
    EXPECT_EQ(ShortcutName::dictate().rawName, QStringLiteral("dictate"));
    EXPECT_EQ(ShortcutName::dictate().defaultShortcut, (Shortcut{49, 0x800}));
}

} // namespace

} // namespace tulvane
