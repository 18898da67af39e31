#include <speech/CleanTranscript.h>

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace tulvane {
namespace {

constexpr CleanupOptions neither{.autoCapitalize = false, .appendTrailingSpace = false};
constexpr CleanupOptions capitals{.autoCapitalize = true, .appendTrailingSpace = false};
constexpr CleanupOptions space{.autoCapitalize = false, .appendTrailingSpace = true};
constexpr CleanupOptions both{.autoCapitalize = true, .appendTrailingSpace = true};

struct Case {
    std::u16string raw;
    std::u16string cleaned;
    CleanupOptions options = neither;
};

void PrintTo(const Case& example, std::ostream* out)
{
    *out << qPrintable(QString::fromStdU16String(example.raw));
}

class CleanTranscript : public ::testing::TestWithParam<Case> {};

TEST_P(CleanTranscript, cleans)
{
    const Case& example = GetParam();
    EXPECT_EQ(cleanTranscript(QString::fromStdU16String(example.raw), example.options).toStdU16String(),
              example.cleaned);
}

const Case brackets[] = {
    {u"[Musikk]", u"", both},
    {u"  [BLANK_AUDIO]  ", u"", both},
    {u"[a] [b]\n[c]", u"", both},
    {u"hei [Musikk] du", u"hei du"},
    {u"hei[Musikk]du", u"heidu"},
    {u"hei [over\nto linjer] du", u"hei du"},
    {u"[]hei", u"hei"},
    {u"a [b [c] d] e", u"a d] e"}, // ends at the first closing bracket
    {u"[uten slutt", u"[uten slutt"},
    {u"slutt] foran [", u"slutt] foran ["},
    {u"a [b] c [d", u"a c [d"},
};
INSTANTIATE_TEST_SUITE_P(Brackets, CleanTranscript, ::testing::ValuesIn(brackets));

const Case tokens[] = {
    {u"<|nocaptions|>hei", u"hei"},
    {u"<|no|><|transcribe|> hei <|endoftext|>", u"hei"},
    {u"<||>hei", u"hei"},
    {u"<|ikke | slutt|>", u"<|ikke | slutt|>"}, // a bar inside is no token
    {u"a < b | c > d", u"a < b | c > d"},
    {u"<|uten slutt", u"<|uten slutt"},
    {u"♪", u"", both},
    {u"♪♪♪ la la ♪", u"la la"},
    {u"a♪♪b", u"ab"},
    {u"♫ hei", u"♫ hei"}, // the other music signs are left
};
INSTANTIATE_TEST_SUITE_P(Tokens, CleanTranscript, ::testing::ValuesIn(tokens));

const Case labels[] = {
    {u"(Latter) hei", u"Hei", capitals},
    {u"(Latter) hei", u"hei", neither},
    {u"(ukjent) hei", u"(ukjent) hei", capitals},
    {u"(musikk)(MUSIC)(Latter)(laughter)(applaus)(Applause)(utydelig)(inaudible)(STILLHET)(silence)", u"",
     both},
    {u"(mUsIkK)", u""},
    {u"( musikk )", u"( musikk )"},
    {u"(musikk og tale)", u"(musikk og tale)"},
    {u"(bakgrunnsmusikk)", u"(bakgrunnsmusikk)"},
    {u"musikk og latter", u"musikk og latter"},
    {u"(musikk", u"(musikk"},
    {u"((musikk))", u"()"},
    {u"ja (sier hun) ja", u"ja (sier hun) ja"},
};
INSTANTIATE_TEST_SUITE_P(Labels, CleanTranscript, ::testing::ValuesIn(labels));

// One pattern after the other, in order: what an earlier one takes away, a later one does not see; and what
// an earlier one leaves is not looked at again.
const Case order[] = {
    {u"([x]musikk)", u""}, {u"(mus♪ikk)", u""},    {u"<|a[|]|>b", u"b"}, {u"[(musikk])", u")"},
    {u"<[x]|a|>b", u"b"},  {u"[♪(musikk)♪]", u""}, {u"♪[♪", u"["},
};
INSTANTIATE_TEST_SUITE_P(Order, CleanTranscript, ::testing::ValuesIn(order));

const Case spacing[] = {
    {u"a  b\t\tc \t d", u"a b c d"},
    {u"a\tb", u"a b"},
    {u"a\u00a0\u00a0b", u"a\u00a0\u00a0b"}, // only space and tab count
    {u"a \n b", u"a\nb"},
    {u"a\n\n\nb", u"a\nb"},
    {u"a   \t \n\t\t b", u"a\nb"},
    {u"a\n \nb", u"a\n\nb"},        // the spaces belong to the first run; the second starts after them
    {u"a\r\n\r\nb", u"a\r\n\r\nb"}, // a carriage return keeps line feeds apart
    {u"a\u2028\u2028b", u"a\u2028\u2028b"},
    {u" \t\n hei \n\n ", u"hei"},
    {u"\u00a0\u2003hei\u3000\u202f", u"hei"},
    {u"\u200bhei\u200b", u"\u200bhei\u200b"}, // a zero-width space is no white space
    {u"hei[a]\n[b]du", u"hei\ndu"},
    {u"", u"", both},
    {u" \n\t\u00a0\u2029", u"", both},
};
INSTANTIATE_TEST_SUITE_P(Spacing, CleanTranscript, ::testing::ValuesIn(spacing));

const Case capitalising[] = {
    {u"østlandet", u"Østlandet", capitals},
    {u"én", u"Én", capitals},
    {u"e\u0301n", u"E\u0301n", capitals}, // letter and accent as two scalars
    {u"ßen", u"SSen", capitals},          // longer than it was
    {u"ﬁn", u"FIn", capitals},
    {u"ŉ a", u"ʼN a", capitals},
    {u"ǆ", u"Ǆ", capitals},
    {u"ǅa", u"ǅa", capitals}, // title case is not lower case
    {u"\U00010428x", u"\U00010400x", capitals},
    {u"ªb", u"ªb", capitals}, // lower-case by another property, not by category
    {u"ⓐb", u"ⓐb", capitals},
    {u"3 hunder", u"3 hunder", capitals},
    {u"«hei»", u"«hei»", capitals},
    {u"\"hei\"", u"\"hei\"", capitals},
    {u"Hei", u"Hei", capitals},
    {u"😀hei", u"😀hei", capitals},
    {u"  [Latter]  hei", u"Hei", capitals},
    {u"a\u0301\u0302\u0303\u0304\u0305\u0306\u0307\u0308\u0309\u030a\u030b\u030c\u030d\u030e\u030f\u0310"
     u"\u0311\u0312\u0313\u0314\u0315\u0316\u0317\u0318\u0319\u031a\u031b\u031c\u031d\u031e\u031f\u0345x",
     u"A\u0301\u0302\u0303\u0304\u0305\u0306\u0307\u0308\u0309\u030a\u030b\u030c\u030d\u030e\u030f\u0310"
     u"\u0311\u0312\u0313\u0314\u0315\u0316\u0317\u0318\u0319\u031a\u031b\u031c\u031d\u031e\u031f\u0399x",
     capitals}, // one character far longer than any usual one: its last mark is part of it too
    {u"hei du. ha det", u"Hei du. ha det", capitals},
};
INSTANTIATE_TEST_SUITE_P(Capitalising, CleanTranscript, ::testing::ValuesIn(capitalising));

const Case trailing[] = {
    {u"Ja.", u"Ja. ", space},         {u"Ja. \n ", u"Ja. ", space},
    {u"ja", u"ja", neither},          {u"ja", u"Ja ", both},
    {u"a\nb", u"a\nb ", space},       {u"😀", u"😀 ", both},
    {u"e\u0301", u"e\u0301 ", space},
};
INSTANTIATE_TEST_SUITE_P(TrailingSpace, CleanTranscript, ::testing::ValuesIn(trailing));

const Case damaged[] = {
    {std::u16string{u'a', 0xd800, u'b', u' ', u'[', u'x', u']'}, u"a\ufffdb"},
    {std::u16string{0xdc00, u' ', u'[', u'x', u']', u'h'}, u"\ufffd h"},
    {std::u16string{u'h', 0xd83d}, u"h\ufffd"},
    {std::u16string{0xdc00, 0xd800}, u"\ufffd\ufffd"},
    {std::u16string{0xd83d, 0xd83d, 0xde00}, u"\ufffd😀"},
    {std::u16string{u'a', 0, u'[', u'x', u']', u'b'}, std::u16string{u'a', 0, u'b'}},
};
INSTANTIATE_TEST_SUITE_P(Damaged, CleanTranscript, ::testing::ValuesIn(damaged));

// What Unicode lists under White_Space; the trimming must know these and no other.
bool isWhiteSpace(char32_t scalar)
{
    return (scalar >= 0x09 && scalar <= 0x0d) || scalar == 0x20 || scalar == 0x85 || scalar == 0xa0 ||
           scalar == 0x1680 || (scalar >= 0x2000 && scalar <= 0x200a) || scalar == 0x2028 ||
           scalar == 0x2029 || scalar == 0x202f || scalar == 0x205f || scalar == 0x3000;
}

TEST(CleanTranscriptSets, trimsExactlyTheWhiteSpaceProperty)
{
    for (char32_t scalar = 1; scalar < 0x3100; ++scalar) {
        const QString around = QString::fromUcs4(&scalar, 1);
        const QString cleaned = cleanTranscript(around + QStringLiteral("♪x") + around, neither);
        EXPECT_EQ(cleaned.size(), isWhiteSpace(scalar) || scalar == U'♪' ? 1 : 3) << static_cast<int>(scalar);
    }
}

TEST(CleanTranscriptSets, nothingOfTheNoiseDependsOnCase)
{
    const QString words[] = {u"musikk"_qs,   u"music"_qs,    u"latter"_qs,    u"laughter"_qs, u"applaus"_qs,
                             u"applause"_qs, u"utydelig"_qs, u"inaudible"_qs, u"stillhet"_qs, u"silence"_qs};
    for (const QString& label : words) {
        EXPECT_EQ(cleanTranscript(u'(' + label + u')', both), QString());
        EXPECT_EQ(cleanTranscript(u'(' + label.toUpper() + u')', both), QString());
        EXPECT_EQ(cleanTranscript(u'(' + label + u"x)", neither), u'(' + label + u"x)");
    }
}

class CleanTranscriptTime : public ::testing::TestWithParam<const char*> {};

// A time that grew with the square of the length would be hours here.
TEST_P(CleanTranscriptTime, growsWithTheLengthOnly)
{
    QString piece = QString::fromUtf8(GetParam());
    const QString text = u"a" + piece.repeated(1'000'000 / piece.size()) + u"b";
    QElapsedTimer timer;
    timer.start();
    (void)cleanTranscript(text, both);
    EXPECT_LT(timer.elapsed(), 5000);
}
INSTANTIATE_TEST_SUITE_P(CleanTranscript, CleanTranscriptTime,
                         ::testing::Values("[", "]", "[]", "[ ", "(", "(musikk", "<|", "<|a|", "<", "|>", "♪",
                                           " ", "\t", "\n", " \n", "\r", "\u00a0", "\u0301", "[<|(♪ \n"));

} // namespace
} // namespace tulvane
