#include <platform/linux/transfers/TransferRecord.h>

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

namespace tulvane::transfers {
namespace {

TransferRecord sample()
{
    TransferRecord record =
        TransferRecord::of({QUrl(QStringLiteral("https://hub.example/a%20b?c=d")), "Tulvane/1", 539'000'000});
    record.etag = "\"abc\"";
    record.size = 538'999'999;
    record.safeBytes = 1'000'000;
    record.boot = "boot";
    record.state = TransferRecord::State::finished;
    record.httpStatus = 206;
    record.aside = true;
    return record;
}

TEST(TransferRecord, SurvivesTheFile)
{
    EXPECT_EQ(TransferRecord::fromJson(sample().toJson()), sample());
    for (const auto state : {TransferRecord::State::running, TransferRecord::State::paused}) {
        TransferRecord record = sample();
        record.state = state;
        EXPECT_EQ(TransferRecord::fromJson(record.toJson()), record);
    }
}

TEST(TransferRecord, TheSameAddressHasTheSameKey)
{
    const QUrl url(QStringLiteral("https://hub.example/a"));
    EXPECT_EQ(TransferRecord::keyOf(url), TransferRecord::keyOf(url));
    EXPECT_NE(TransferRecord::keyOf(url),
              TransferRecord::keyOf(QUrl(QStringLiteral("https://hub.example/b"))));
    EXPECT_EQ(TransferRecord::keyOf(url).size(), 16);
}

TEST(TransferRecord, ACutOrChangedTextIsNone)
{
    const QByteArray whole = sample().toJson();
    for (qsizetype length = 0; length < whole.size(); ++length)
        EXPECT_FALSE(TransferRecord::fromJson(whole.left(length))) << length;
    for (const char* const text : {"[]", "null", "{}", "nonsense"})
        EXPECT_FALSE(TransferRecord::fromJson(text)) << text;
}

TEST(TransferRecord, FieldsOutOfRangeAreNone)
{
    const QJsonObject good = QJsonDocument::fromJson(sample().toJson()).object();
    const auto with = [&good](const char* key, const QJsonValue& value) {
        QJsonObject object = good;
        object.insert(QLatin1String(key), value);
        return TransferRecord::fromJson(QJsonDocument(object).toJson());
    };
    EXPECT_TRUE(with("size", -1));
    EXPECT_FALSE(with("size", -2));
    EXPECT_FALSE(with("size", 1.5));
    EXPECT_FALSE(with("size", QStringLiteral("1")));
    EXPECT_FALSE(with("size", 1e300));
    EXPECT_FALSE(with("safeBytes", -1));
    EXPECT_TRUE(with("httpStatus", 0));
    EXPECT_TRUE(with("httpStatus", 999));
    EXPECT_FALSE(with("httpStatus", 1000));
    EXPECT_FALSE(with("httpStatus", 20'888'888'880.0));
    EXPECT_FALSE(with("state", QStringLiteral("asleep")));
    EXPECT_FALSE(with("url", QStringLiteral("")));
    EXPECT_FALSE(with("url", QJsonValue()));
}

TEST(TransferRecord, AHeaderCannotBeSmuggledIn)
{
    for (const char* const key : {"etag", "userAgent"}) {
        QJsonObject object = QJsonDocument::fromJson(sample().toJson()).object();
        object.insert(QLatin1String(key), QStringLiteral("a\r\nCookie: b"));
        EXPECT_FALSE(TransferRecord::fromJson(QJsonDocument(object).toJson())) << key;
    }
}

} // namespace
} // namespace tulvane::transfers
