#include <ports/VirtualKeys.h>

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace tulvane {

namespace {

TEST(VirtualKeys, EveryKeyIsThereOnceUnderEachOfItsNames)
{
    std::set<quint32> codes;
    std::set<quint16> evdev;
    std::set<std::string> places;
    for (const VirtualKey& key : virtualKeys::all) {
        EXPECT_TRUE(codes.insert(key.code).second) << key.name;
        EXPECT_TRUE(evdev.insert(key.evdev).second) << key.name;
        EXPECT_STRNE(key.name, "");
        if (key.code != virtualKeys::fn) {
            EXPECT_TRUE(places.insert(key.xkb).second) << key.name;
        }
        EXPECT_LE(std::string(key.xkb).size(), 4U) << key.name;
    }
}

TEST(VirtualKeys, AreFoundByEitherNumber)
{
    EXPECT_STREQ(virtualKeys::byCode(49)->name, "Space");
    EXPECT_EQ(virtualKeys::byEvdev(57), virtualKeys::byCode(49));
    EXPECT_EQ(virtualKeys::byEvdev(100)->code, virtualKeys::rightOption);
    EXPECT_EQ(virtualKeys::byEvdev(126)->code, virtualKeys::rightCommand);
    EXPECT_EQ(virtualKeys::byEvdev(97)->code, virtualKeys::rightControl);
    EXPECT_EQ(virtualKeys::byEvdev(54)->code, virtualKeys::rightShift);
    EXPECT_EQ(virtualKeys::byCode(52), nullptr);
    EXPECT_EQ(virtualKeys::byEvdev(0), nullptr);
}

TEST(VirtualKeys, KnowTheFunctionKeys)
{
    std::set<std::string> names;
    for (const VirtualKey& key : virtualKeys::all) {
        if (virtualKeys::isFunctionKey(key.code))
            names.insert(key.name);
    }
    std::set<std::string> expected;
    for (int number = 1; number <= 20; ++number)
        expected.insert(std::string("F").append(std::to_string(number)));
    EXPECT_EQ(names, expected);
    EXPECT_STREQ(virtualKeys::byCode(96)->name, "F5");
    EXPECT_FALSE(virtualKeys::isFunctionKey(virtualKeys::fn));
    EXPECT_FALSE(virtualKeys::isFunctionKey(1000));
}

TEST(VirtualKeys, KnowTheModifiers)
{
    for (quint32 code = 54; code <= 63; ++code)
        EXPECT_TRUE(virtualKeys::isModifier(code)) << code;
    EXPECT_FALSE(virtualKeys::isModifier(53));
    EXPECT_FALSE(virtualKeys::isModifier(64));
}

} // namespace

} // namespace tulvane
