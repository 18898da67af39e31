#include <stats/WordCount.h>

#include <QList>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

QString text(const char8_t* utf8)
{
    return QString::fromUtf8(utf8);
}

TEST(WordCount, PiecesBetweenWhiteSpaceAreWords)
{
    EXPECT_EQ(countWords(text(u8"")), 0);
    EXPECT_EQ(countWords(text(u8"   \n\t ")), 0);
    EXPECT_EQ(countWords(text(u8"én to  tre")), 3);
    EXPECT_EQ(countWords(text(u8"  én\nto\r\n tre\t\v\f fire ")), 4);
    EXPECT_EQ(countWords(text(u8"ord-for-ord, ikke sant?")), 3);
}

TEST(WordCount, EveryWhiteSpaceCharacterAndNoOtherSeparates)
{
    const QList<char32_t> whiteSpace{0x09,   0x0A,   0x0B,   0x0C,   0x0D,   0x20,   0x85,   0xA0,   0x1680,
                                     0x2000, 0x2001, 0x2002, 0x2003, 0x2004, 0x2005, 0x2006, 0x2007, 0x2008,
                                     0x2009, 0x200A, 0x2028, 0x2029, 0x202F, 0x205F, 0x3000};
    for (char32_t character = 1; character <= 0x10FFFF; ++character) {
        if (character >= 0xD800 && character <= 0xDFFF)
            continue;
        const QString joined = u'a' + QString::fromUcs4(&character, 1) + u'b';
        ASSERT_EQ(countWords(joined), whiteSpace.contains(character) ? 2 : 1)
            << "U+" << std::hex << static_cast<unsigned>(character);
    }
}

TEST(WordCount, PieceWithoutLetterOrNumberIsNoWord)
{
    EXPECT_EQ(countWords(text(u8"– … ? -- !!")), 0);
    EXPECT_EQ(countWords(text(u8"😀 👍🏽 €")), 0);
    EXPECT_EQ(countWords(text(u8"a – b")), 2);
    EXPECT_EQ(countWords(text(u8"(ja) «nei»")), 2);
    EXPECT_EQ(countWords(text(u8"\u0301")), 0); // a combining accent alone
}

TEST(WordCount, EveryKindOfLetterAndNumberMakesAWord)
{
    EXPECT_EQ(countWords(text(u8"7 ½ Ⅷ ٣ ²")), 5);
    EXPECT_EQ(countWords(text(u8"ß Å ǅ ʰ 日本 한 א")), 7);
    EXPECT_EQ(countWords(text(u8"𝒜 𐐀 𒐀")), 3); // beyond the basic plane
}

TEST(WordCount, HalfACharacterIsNoWord)
{
    EXPECT_EQ(countWords(QString(QChar(0xD835))), 0);
}

TEST(CharacterCount, WhiteSpaceAroundTheTextIsNotCounted)
{
    EXPECT_EQ(countCharacters(text(u8"")), 0);
    EXPECT_EQ(countCharacters(text(u8" \n\u2028\u00A0 ")), 0);
    EXPECT_EQ(countCharacters(text(u8"  hei du \n")), 6);
    EXPECT_EQ(countCharacters(text(u8"– ...")), 5);
}

TEST(CharacterCount, CountsWhatAReaderSees)
{
    EXPECT_EQ(countCharacters(text(u8"blåbær")), 6);
    EXPECT_EQ(countCharacters(text(u8"e\u0301")), 1);
    EXPECT_EQ(countCharacters(text(u8"a\r\nb")), 3);
    EXPECT_EQ(countCharacters(text(u8"👍🏽")), 1);
    EXPECT_EQ(countCharacters(text(u8"👨‍👩‍👧‍👦")), 1);
    EXPECT_EQ(countCharacters(text(u8"🇳🇴🇸🇪")), 2);
    EXPECT_EQ(countCharacters(text(u8"1️⃣")), 1);
    EXPECT_EQ(countCharacters(text(u8"각")), 1);
}

} // namespace

} // namespace tulvane::test
