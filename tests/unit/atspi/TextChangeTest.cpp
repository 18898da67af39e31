#include <platform/linux/atspi/TextChange.h>

#include <gtest/gtest.h>

namespace tulvane {

using Kind = TextChange::Kind;

TEST(TextUnitTest, IsToldFromTheNumberOfCharacters)
{
    EXPECT_EQ(unitOf(u"a😀b"_qs, 3), TextUnit::codePoint);
    EXPECT_EQ(unitOf(u"a😀b"_qs, 4), TextUnit::utf16);
    EXPECT_EQ(unitOf(u"a😀b"_qs, 6), std::nullopt);
    EXPECT_EQ(unitOf(QString(), 0), TextUnit::codePoint);
    EXPECT_EQ(unitOf(QString(), -1), std::nullopt);
}

TEST(TextUnitTest, LengthsAreInTheUnit)
{
    EXPECT_EQ(lengthIn(TextUnit::codePoint, u"æ😀–"_qs), 3);
    EXPECT_EQ(lengthIn(TextUnit::utf16, u"æ😀–"_qs), 4);
}

TEST(TextUnitTest, OffsetsBecomeIndicesAndThoseOutsideNone)
{
    const QString text = u"😀a😀"_qs;
    EXPECT_EQ(indexOf(TextUnit::codePoint, text, 0), 0);
    EXPECT_EQ(indexOf(TextUnit::codePoint, text, 1), 2);
    EXPECT_EQ(indexOf(TextUnit::codePoint, text, 2), 3);
    EXPECT_EQ(indexOf(TextUnit::codePoint, text, 3), 5);
    EXPECT_EQ(indexOf(TextUnit::codePoint, text, 4), std::nullopt);
    EXPECT_EQ(indexOf(TextUnit::utf16, text, 5), 5);
    EXPECT_EQ(indexOf(TextUnit::utf16, text, 6), std::nullopt);
    EXPECT_EQ(indexOf(TextUnit::utf16, text, -1), std::nullopt);
    EXPECT_EQ(indexOf(TextUnit::codePoint, text, -1), std::nullopt);
}

struct ChangeCase {
    const char16_t* name;
    const char16_t* before;
    const char16_t* after;
    qsizetype start;
    qsizetype end;
    const char16_t* text;
    TextChange expected;
};

class TextChangeTest : public testing::TestWithParam<ChangeCase> {};

TEST_P(TextChangeTest, IsToldFromBeforeAndAfter)
{
    const ChangeCase& what = GetParam();
    EXPECT_EQ(TextChange::between(QString::fromUtf16(what.before), QString::fromUtf16(what.after), what.start,
                                  what.end, QString::fromUtf16(what.text)),
              what.expected)
        << qPrintable(QString::fromUtf16(what.name));
}

INSTANTIATE_TEST_SUITE_P(
    All, TextChangeTest,
    testing::Values(
        ChangeCase{u"as it was", u"ab", u"ab", 1, 1, u"x", {Kind::nothing, 0}},
        ChangeCase{u"at the caret", u"ab", u"axyb", 1, 1, u"xy", {Kind::inserted, 2}},
        ChangeCase{u"behind the selection", u"a[s]b", u"a[s]xyb", 1, 4, u"xy", {Kind::inserted, 2}},
        ChangeCase{u"the same letters around it", u"aaaa", u"aaaaaa", 2, 2, u"aa", {Kind::inserted, 2}},
        ChangeCase{u"and a key of the user's", u"ab", u"axykb", 1, 1, u"xy", {Kind::inserted, 3}},
        ChangeCase{u"at the end", u"ab", u"abxy", 2, 2, u"xy", {Kind::inserted, 2}},
        ChangeCase{u"into nothing", u"", u"xy", 0, 0, u"xy", {Kind::inserted, 2}},
        ChangeCase{u"instead of the selection", u"asb", u"axyb", 1, 2, u"xy", {Kind::replaced, 0}},
        ChangeCase{u"instead of a longer one", u"assssb", u"axyb", 1, 5, u"xy", {Kind::replaced, 0}},
        ChangeCase{u"only a part", u"ab", u"axb", 1, 1, u"xy", {Kind::altered, 1}},
        ChangeCase{u"changed on the way", u"ab", u"aXYb", 1, 1, u"xy", {Kind::altered, 2}},
        ChangeCase{u"a key of the user's elsewhere", u"ab", u"kaxyb", 1, 1, u"xy", {Kind::other, 0}},
        ChangeCase{u"the end cut off", u"abcd", u"axyb", 1, 1, u"xy", {Kind::damaged, 0}},
        ChangeCase{u"the end cut off, still longer", u"abcd", u"axybc", 1, 1, u"xy", {Kind::damaged, 0}},
        ChangeCase{u"all gone", u"abcd", u"", 1, 1, u"xy", {Kind::damaged, 0}},
        ChangeCase{u"another text", u"ab", u"klmnopq", 1, 1, u"xy", {Kind::damaged, 0}}));

} // namespace tulvane
