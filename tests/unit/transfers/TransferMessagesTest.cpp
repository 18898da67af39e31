#include <platform/linux/transfers/TransferMessages.h>

#include <gtest/gtest.h>

namespace tulvane::transfers {
namespace {

using Kind = TransferError::Kind;

TEST(TransferMessages, ARequestSurvivesTheSocket)
{
    const TransferRequest request{QUrl(QStringLiteral("https://hub.example/a%20b")), "Tulvane/1",
                                  539'000'000};
    EXPECT_EQ(requestIn(startMessage(request)), request);
    EXPECT_FALSE(requestIn(message("start")));
}

TEST(TransferMessages, EveryErrorSurvivesTheSocket)
{
    for (const Kind kind : {Kind::cancelled, Kind::timedOut, Kind::hostNotFound, Kind::cannotConnect,
                            Kind::connectionLost, Kind::insecure, Kind::badAnswer, Kind::noSpace,
                            Kind::notWritten, Kind::alreadyRunning, Kind::unavailable}) {
        const TransferError error = TransferError(kind, QStringLiteral("1000")).withResumeData("{\"a\":1}");
        const QJsonObject words = completedMessage(QStringLiteral("k"), error);
        EXPECT_EQ(words.value(u"key").toString(), QStringLiteral("k"));
        EXPECT_EQ(errorIn(words), error);
    }
    EXPECT_EQ(errorIn(completedMessage(QStringLiteral("k"), std::nullopt)), std::nullopt);
}

TEST(TransferError, EveryKindHasItsText)
{
    QStringList texts;
    for (const Kind kind : {Kind::cancelled, Kind::timedOut, Kind::hostNotFound, Kind::cannotConnect,
                            Kind::connectionLost, Kind::insecure, Kind::badAnswer, Kind::noSpace,
                            Kind::notWritten, Kind::alreadyRunning, Kind::unavailable})
        texts.append(TransferError(kind, QStringLiteral("5000000")).description());
    EXPECT_EQ(texts.removeDuplicates(), 0);
    EXPECT_EQ(TransferError(Kind::noSpace, QStringLiteral("5000000")).description(),
              QStringLiteral("There is not enough free disk space: 5 MB more needed."));
    EXPECT_EQ(TransferError(Kind::notWritten, QStringLiteral("No luck")).description(),
              QStringLiteral("The download could not be written to disk: No luck"));
}

} // namespace
} // namespace tulvane::transfers
