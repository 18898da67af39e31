#include <platform/linux/wayland/fields/FieldState.h>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

/// "ab|c", or "a[b]c" with the caret at the end.
TextAround around(const QByteArray& marked)
{
    QByteArray text = marked;
    const auto take = [&text](char mark) {
        const qsizetype place = text.indexOf(mark);
        if (place >= 0)
            text.remove(place, 1);
        return place;
    };
    const qsizetype start = take('[');
    if (start >= 0) {
        const qsizetype end = take(']');
        return {text, static_cast<std::uint32_t>(end), static_cast<std::uint32_t>(start)};
    }
    const auto caret = static_cast<std::uint32_t>(take('|'));
    return {text, caret, caret};
}

bool hasTaken(const QByteArray& before, const QByteArray& text, const QByteArray& after)
{
    return around(after).hasTaken(text, around(before));
}

} // namespace

TEST(TextAround, ATextBeforeTheCaretHasArrived)
{
    EXPECT_TRUE(hasTaken("|", "Hei. ", "Hei. |"));
    EXPECT_TRUE(hasTaken("før | etter", "æ 😀", "før æ 😀| etter"));
    EXPECT_TRUE(hasTaken("et [gammelt] ord", "nytt", "et nytt| ord"));
    EXPECT_TRUE(hasTaken("[samme]", "samme", "samme|"));
    EXPECT_TRUE(hasTaken("Hei.|", "Hei.", "Hei.Hei.|"));
}

TEST(TextAround, WhatIsAsItWasOrElseHasTakenNothing)
{
    EXPECT_FALSE(hasTaken("Hei.|", "Hei.", "Hei.|"));
    EXPECT_FALSE(hasTaken("|", "Hei.", "|"));
    EXPECT_FALSE(hasTaken("[bort]", "Hei.", "|"));
    EXPECT_FALSE(hasTaken("|", "Hei på deg.", "Hei på|"));
    EXPECT_FALSE(hasTaken("|", "", "a|"));
}

TEST(TextAround, TheUserMayGoOnTyping)
{
    EXPECT_TRUE(hasTaken("|", "Hei.", "Hei.x|"));
    EXPECT_TRUE(hasTaken("Hei.|", "Hei.", "Hei.Hei.x|"));
    EXPECT_FALSE(hasTaken("Hei.|", "Hei.", "Hei.x|"));
}

TEST(TextAround, AFieldMayShowTheCaretsLineAlone)
{
    EXPECT_TRUE(hasTaken("|", "én\nto", "to|"));
    EXPECT_TRUE(hasTaken("|", "én\nto tre ", "to tre |"));
    EXPECT_FALSE(hasTaken("|", "én\nto", "o|"));
    EXPECT_FALSE(hasTaken("|", "én\n", "|"));
}

TEST(TextAround, AFieldMayShowTheLastFewWordsAlone)
{
    EXPECT_TRUE(hasTaken("|", "én to tre fire ", "tre fire |"));
    EXPECT_TRUE(hasTaken("|", "én\n\nto\ntre", "to\ntre|"));
    // Less than a word may be the user's own.
    EXPECT_FALSE(hasTaken("|", "én to tre fire ", " |"));
    EXPECT_FALSE(hasTaken("|", "én to tre fire ", "ire |"));
}

TEST(TextAround, ABlankLastLineTellsNothing)
{
    EXPECT_TRUE(TextAround::canTell("én"));
    EXPECT_TRUE(TextAround::canTell("  "));
    EXPECT_TRUE(TextAround::canTell("én\nto "));
    EXPECT_FALSE(TextAround::canTell("én\n"));
    EXPECT_FALSE(TextAround::canTell("én\n \t"));
}

TEST(TextAround, AFieldMayShowOnlyTheEndOfALongText)
{
    const QByteArray text = QByteArray("Langt, ").repeated(300) + "slutt.";
    EXPECT_TRUE(hasTaken("|", text, text.right(100) + "|"));
    EXPECT_FALSE(hasTaken("|", text, text.right(3) + "|"));
}

TEST(FieldState, KnowsPasswordsByPurposeAndByHint)
{
    const auto isForPasswords = [](std::uint32_t hints, std::uint32_t purpose) {
        FieldState field;
        field.hints = hints;
        field.purpose = purpose;
        return field.isForPasswords();
    };
    EXPECT_FALSE(isForPasswords(0, 0));
    EXPECT_FALSE(isForPasswords(0x200, 13));
    EXPECT_TRUE(isForPasswords(0x40, 0));
    EXPECT_TRUE(isForPasswords(0x80, 0));
    EXPECT_TRUE(isForPasswords(0, 8));
    EXPECT_TRUE(isForPasswords(0, 9));
}

} // namespace tulvane
