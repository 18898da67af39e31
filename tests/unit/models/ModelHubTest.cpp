#include <models/ModelHub.h>
#include <support/LogCapture.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

const QUrl publicHub = modelHubURL({}, {});

TEST(ModelHub, WithoutAChoiceItIsTheEncryptedPublicOne)
{
    EXPECT_EQ(publicHub.scheme(), QStringLiteral("https"));
    EXPECT_TRUE(publicHub.path().endsWith(u'/'));
}

TEST(ModelHub, TheEnvironmentComesBeforeTheSetting)
{
    const QString environment = QStringLiteral("http://127.0.0.1:8080/");
    const QString setting = QStringLiteral("https://mirror.example/");
    EXPECT_EQ(modelHubURL(environment, setting), QUrl(environment));
    EXPECT_EQ(modelHubURL({}, setting), QUrl(setting));
}

TEST(ModelHub, ASlashIsAddedWhereItIsMissing)
{
    EXPECT_EQ(modelHubURL(QStringLiteral("https://mirror.example"), {}).toString(),
              QStringLiteral("https://mirror.example/"));
    EXPECT_EQ(modelHubURL(QStringLiteral("https://mirror.example/models"), {}).toString(),
              QStringLiteral("https://mirror.example/models/"));
}

TEST(ModelHub, WhatIsNoWebAddressIsLoggedAndPassedOver)
{
    for (const char* const text : {"ftp://mirror.example/", "file:///tmp/", "mirror.example", "http://",
                                   "://", "https://mirror.example/?a=b", "https://mirror.example/#a"}) {
        const test::LogCapture log;
        EXPECT_EQ(modelHubURL(QString::fromLatin1(text), {}), publicHub) << text;
        EXPECT_EQ(
            log.texts("models", QtCriticalMsg),
            QStringList{QStringLiteral("Not the address of a model hub: ") + QString::fromLatin1(text)});
    }
}

} // namespace
} // namespace tulvane
