#include <platform/linux/storage/PreferencesDocument.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

PreferencesDocument parsed(const QByteArray& text)
{
    auto document = PreferencesDocument::parse(text);
    EXPECT_TRUE(document) << text.constData();
    return document ? std::move(*document) : PreferencesDocument();
}

TEST(PreferencesDocument, KeepsUnknownKeysTheirOrderAndTheTypesOfNumbers)
{
    const QByteArray text = R"({
  "zebra": 1.0,
  "apple": 1,
  "hotkeyMode": "hold",
  "huge": 18446744073709551615,
  "nothing": null,
  "nested": {
    "z": [
      1,
      2.5,
      -0.0,
      true,
      null
    ],
    "a": {}
  },
  "Åse 🎈": "\u0000\n"
}
)";
    PreferencesDocument document = parsed(text);
    EXPECT_EQ(document.text(), text);
    document.set(u"hotkeyMode"_qs, u"toggle"_qs);
    EXPECT_EQ(document.text(), QByteArray(text).replace("\"hold\"", "\"toggle\""));
    document.set(u"new"_qs, qint64{1});
    EXPECT_TRUE(document.text().endsWith(",\n  \"new\": 1\n}\n"));
    document.remove(u"new"_qs);
    document.remove(u"apple"_qs);
    EXPECT_EQ(document.text(),
              QByteArray(text).replace("\"hold\"", "\"toggle\"").replace("  \"apple\": 1,\n", ""));
}

TEST(PreferencesDocument, AFileWithNothingInItIsAnEmptyObject)
{
    for (const QByteArray& text : {QByteArray(), QByteArray("\n"), QByteArray("  \r\n\t ")}) {
        EXPECT_TRUE(parsed(text).values().isEmpty());
        EXPECT_EQ(parsed(text).text(), "{}\n");
    }
}

TEST(PreferencesDocument, WhatIsNotOneObjectIsDamaged)
{
    for (const QByteArray& text :
         {QByteArray("[]"), QByteArray("3"), QByteArray("null"), QByteArray("\"text\""), QByteArray("{"),
          QByteArray("{\"a\": 1"), QByteArray("{\"a\": 1,}"), QByteArray("{} {}"), QByteArray("{'a': 1}"),
          QByteArray("{\"a\": 01}"), QByteArray("{\"a\": nan}"), QByteArray("{\"a\": \"\xff\"}"),
          QByteArray(R"({"a": "\ud800"})"), QByteArray("\0\0\0\0", 4), QByteArray("{}\0", 3),
          QByteArray("{}\0{\"a\": 1}", 11), QByteArray("hotkeyMode=hold")}) {
        const auto document = PreferencesDocument::parse(text);
        ASSERT_FALSE(document) << text.constData();
        EXPECT_FALSE(document.error().isEmpty());
    }
}

TEST(PreferencesDocument, AByteOrderMarkIsNoDamage)
{
    EXPECT_EQ(parsed("\xef\xbb\xbf{\"a\": 1}").value(u"a"_qs), QVariant(qint64{1}));
}

TEST(PreferencesDocument, NestingHasALimitAndBracketsInTextDoNotCount)
{
    const auto nested = [](int depth) -> QByteArray {
        return "{\"a\": " + QByteArray(depth, '[') + QByteArray(depth, ']') + "}";
    };
    EXPECT_TRUE(PreferencesDocument::parse(nested(150)));
    EXPECT_FALSE(PreferencesDocument::parse(nested(1'000'000)));
    EXPECT_TRUE(PreferencesDocument::parse("{\"a\": \"\\\"" + QByteArray(1000, '[') + "\"}"));
    EXPECT_TRUE(PreferencesDocument::parse("{\"a\": [" + QByteArray("[],").repeated(1000) + "1]}"));
}

TEST(PreferencesDocument, OfTwoEqualKeysTheLastCounts)
{
    EXPECT_EQ(parsed(R"({"a": 1, "a": 2})").value(u"a"_qs), QVariant(qint64{2}));
}

TEST(PreferencesDocument, ANullIsAnAbsentKeyThatStays)
{
    const PreferencesDocument document = parsed(R"({"a": null})");
    EXPECT_FALSE(document.value(u"a"_qs).isValid());
    EXPECT_TRUE(document.values().isEmpty());
    EXPECT_EQ(document.text(), "{\n  \"a\": null\n}\n");
}

TEST(PreferencesDocument, HalfASurrogatePairDoesNotSpoilTheFile)
{
    PreferencesDocument document;
    document.set(u"a"_qs, QString(QChar(0xD800) % u"b"));
    const PreferencesDocument again = parsed(document.text());
    EXPECT_TRUE(again.value(u"a"_qs).toString().endsWith(u'b'));
}

} // namespace
} // namespace tulvane
