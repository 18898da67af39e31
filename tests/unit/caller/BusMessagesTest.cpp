#include <platform/linux/caller/BusMessages.h>

#include <gtest/gtest.h>

#include <cstring>

namespace tulvane::test {

namespace {

constexpr std::uint32_t number = 7;

BusCall call(std::optional<QByteArray> argument = {})
{
    return {.destination = "com.dunio.Tulvane",
            .path = "/com/dunio/Tulvane",
            .interface = "com.dunio.Tulvane",
            .member = "Status",
            .argument = std::move(argument)};
}

void putNumber(QByteArray& message, qsizetype place, std::uint32_t value)
{
    std::memcpy(message.data() + place, &value, sizeof value);
}

} // namespace

TEST(BusMessages, ACallsLengthAndTextAreReadBack)
{
    for (const QByteArray& text : {QByteArray(), QByteArray("æ"), QByteArray(5000, 'x')}) {
        const QByteArray message = busMessages::encoded(call(text), number);
        EXPECT_EQ(busMessages::length(message.left(busMessages::fixedPart)), message.size());
        const auto read = busMessages::decoded(message);
        ASSERT_TRUE(read);
        EXPECT_EQ(read->type, BusMessage::Type::call);
        EXPECT_EQ(read->answers, 0U);
        EXPECT_EQ(read->text, text);
    }
    const QByteArray bare = busMessages::encoded(call(), number);
    EXPECT_EQ(bare.size() % 8, 0);
    EXPECT_EQ(busMessages::decoded(bare)->text, std::nullopt);
}

TEST(BusMessages, WhatIsCutOffIsNoMessage)
{
    const QByteArray message = busMessages::encoded(call("text"), number);
    for (qsizetype size = 0; size < message.size(); ++size)
        EXPECT_FALSE(busMessages::decoded(message.left(size))) << size;
    EXPECT_FALSE(busMessages::decoded(message + '\0'));
}

TEST(BusMessages, AnyByteMayBeWrong)
{
    const QByteArray message = busMessages::encoded(call("text"), number);
    for (qsizetype place = 0; place < message.size(); ++place) {
        for (const int value : {0, 1, 0x7f, 0x80, 0xff}) {
            QByteArray changed = message;
            changed[place] = static_cast<char>(value);
            // Whatever it is taken for, nothing is read outside of it.
            const auto read = busMessages::decoded(changed);
            EXPECT_LE(read ? read->text.value_or(QByteArray()).size() : 0, message.size());
        }
    }
}

TEST(BusMessages, OnesFromAnotherKindOfMachineAndEndlessOnesAreNotRead)
{
    QByteArray message = busMessages::encoded(call(), number);
    message[0] = message[0] == 'l' ? 'B' : 'l';
    EXPECT_FALSE(busMessages::length(message));
    message = busMessages::encoded(call(), number);
    message[3] = 2;
    EXPECT_FALSE(busMessages::length(message));
    for (const qsizetype place : {4, 12}) {
        message = busMessages::encoded(call(), number);
        putNumber(message, place, 0xffffffffU);
        EXPECT_FALSE(busMessages::length(message)) << place;
        putNumber(message, place, busMessages::longest);
        EXPECT_FALSE(busMessages::length(message)) << place;
    }
}

} // namespace tulvane::test
