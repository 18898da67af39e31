#include <ports/DefaultsError.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

TEST(DefaultsError, EachKindTellsTheUserWhatHappened)
{
    EXPECT_EQ(
        DefaultsError::damaged(u"a.json"_qs, u"a.json.damaged-1"_qs).description(),
        u"The settings file was damaged. It was set aside as a.json.damaged-1, and settings start afresh.");
    EXPECT_EQ(DefaultsError::damagedWhileRunning(u"a.json"_qs, u"a.json.damaged-1"_qs).description(),
              u"The settings file was damaged while Tulvane was running. It was set aside as "
              u"a.json.damaged-1, and the "
              "settings in use were stored again.");
    EXPECT_EQ(DefaultsError::damagedInPlace(u"a.json"_qs, u"because"_qs).description(),
              u"The settings file a.json is damaged and could not be set aside: because");
    EXPECT_EQ(DefaultsError::unreadable(u"a.json"_qs, u"because"_qs).description(),
              u"The settings file a.json cannot be read: because");
    EXPECT_EQ(DefaultsError::notWritten(u"a.json"_qs, u"because"_qs).description(),
              u"The setting could not be saved to a.json: because");
    EXPECT_EQ(DefaultsError::notStorable(u"key"_qs).description(), u"The value for key cannot be stored.");
}

TEST(DefaultsError, IsEqualInAllItsPartsOrNotAtAll)
{
    const DefaultsError error = DefaultsError::unreadable(u"a"_qs, u"b"_qs);
    EXPECT_EQ(error, DefaultsError::unreadable(u"a"_qs, u"b"_qs));
    EXPECT_NE(error, DefaultsError::unreadable(u"x"_qs, u"b"_qs));
    EXPECT_NE(error, DefaultsError::unreadable(u"a"_qs, u"x"_qs));
    EXPECT_NE(error, DefaultsError::notWritten(u"a"_qs, u"b"_qs));
}

TEST(DefaultsError, APercentSignInAPathIsNoPlaceholder)
{
    EXPECT_TRUE(DefaultsError::unreadable(u"/%2/a"_qs, u"b"_qs).description().contains(u"/%2/a"));
}

} // namespace
} // namespace tulvane
