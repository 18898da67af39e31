#include <speech/device/HelperMessages.h>

#include <gtest/gtest.h>

namespace tulvane::helper {
namespace {

TEST(HelperMessages, ARequestArrivesAsItWasSent)
{
    const TranscriptionOptions options{.language = QStringLiteral("no"),
                                       .initialPrompt = QStringLiteral("Kari"),
                                       .threadCount = 3,
                                       .translate = true};
    const auto load = requestOf(bytesOf(Request(Load{.modelFile = QStringLiteral("/a/b.bin"), .device = 7})));
    ASSERT_TRUE(load && std::holds_alternative<Load>(*load));
    EXPECT_EQ(std::get<Load>(*load).modelFile, QStringLiteral("/a/b.bin"));
    EXPECT_EQ(std::get<Load>(*load).device, 7U);
    const auto take = requestOf(bytesOf(Request(Transcribe{.samples = {0.5F, -1.0F}, .options = options})));
    ASSERT_TRUE(take && std::holds_alternative<Transcribe>(*take));
    EXPECT_EQ(std::get<Transcribe>(*take).samples, (std::vector<float>{0.5F, -1.0F}));
    EXPECT_EQ(std::get<Transcribe>(*take).options.initialPrompt, options.initialPrompt);
    EXPECT_EQ(std::get<Transcribe>(*take).options.threadCount, 3);
    EXPECT_TRUE(std::get<Transcribe>(*take).options.translate);
    EXPECT_TRUE(std::holds_alternative<ListDevices>(*requestOf(bytesOf(Request(ListDevices())))));
    EXPECT_TRUE(std::holds_alternative<Unload>(*requestOf(bytesOf(Request(Unload())))));
}

TEST(HelperMessages, AnAnswerArrivesAsItWasSent)
{
    const ComputingDevice card{.index = 1,
                               .name = QStringLiteral("Card"),
                               .kind = DeviceKind::discrete,
                               .driver = QStringLiteral("d 1"),
                               .totalBytes = 9,
                               .freeBytes = 8};
    const auto devices = answerOf(bytesOf(Answer(Devices{{card}})));
    ASSERT_TRUE(devices && std::holds_alternative<Devices>(*devices));
    EXPECT_EQ(std::get<Devices>(*devices).devices, ComputingDevices{card});
    const auto text =
        answerOf(bytesOf(Answer(RecognisedText{QStringLiteral("Blåbær"), QStringLiteral("no")})));
    ASSERT_TRUE(text && std::holds_alternative<RecognisedText>(*text));
    EXPECT_EQ(std::get<RecognisedText>(*text).text, QStringLiteral("Blåbær"));
    const EngineError lost = EngineError::transcriptionFailed(
        -6, {.kind = EngineObstacle::Kind::library, .detail = QStringLiteral("device lost")});
    const auto error = answerOf(bytesOf(Answer(lost)));
    ASSERT_TRUE(error && std::holds_alternative<EngineError>(*error));
    EXPECT_EQ(std::get<EngineError>(*error), lost);
}

TEST(HelperMessages, EveryCutAndEveryForeignByteIsRefusedOrReadWithoutACrash)
{
    const QByteArray whole =
        bytesOf(Request(Transcribe{.samples = std::vector<float>(50, 0.1F), .options = {}}));
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(requestOf(whole.left(size))) << size;
    for (qsizetype place = 0; place < whole.size(); ++place) {
        QByteArray damaged = whole;
        damaged[place] = static_cast<char>(damaged[place] ^ 0x7F);
        static_cast<void>(requestOf(damaged));
        static_cast<void>(answerOf(damaged));
    }
}

} // namespace
} // namespace tulvane::helper
