#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <QVariantList>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

const QString list = QStringLiteral("AppleLanguages");

/// The system's own list after a start with these stored.
class LanguageSync : public ::testing::Test {
protected:
    void store(const QString& language, const QVariant& languages)
    {
        if (!language.isNull()) {
            EXPECT_TRUE(defaults.set(QStringLiteral("appLanguage"), language));
        }
        if (languages.isValid()) {
            EXPECT_TRUE(defaults.set(list, languages));
        }
        written = defaults.writes().size();
    }
    [[nodiscard]] QVariant synced()
    {
        AppSettings(defaults).syncInterfaceLanguage();
        return defaults.value(list);
    }
    [[nodiscard]] bool hasWritten() const { return defaults.writes().size() > written; }

    FakeUserDefaults defaults;
    qsizetype written = 0;
};

const QVariantList onlyNorwegian{QStringLiteral("nb")};
const QVariantList onlyEnglish{QStringLiteral("en")};

TEST_F(LanguageSync, AMissingListBecomesTheInterfacesLanguage)
{
    EXPECT_EQ(synced().toList(), onlyNorwegian) << "nothing stored is Norwegian";
    store(QStringLiteral("en"), {});
    EXPECT_EQ(synced().toList(), onlyEnglish);
}

TEST_F(LanguageSync, AListThatBeginsWithTheLanguageStaysWhole)
{
    const QVariantList englishFirst{QStringLiteral("en"), QStringLiteral("nb")};
    store(QStringLiteral("en"), englishFirst);
    EXPECT_EQ(synced().toList(), englishFirst);
    EXPECT_FALSE(hasWritten());
}

TEST_F(LanguageSync, AListThatBeginsWithAnotherIsReplacedByOneEntry)
{
    store(QStringLiteral("en"), onlyNorwegian);
    EXPECT_EQ(synced().toList(), onlyEnglish);
    store(QStringLiteral("nb"), QVariantList{QStringLiteral("en"), QStringLiteral("nb")});
    EXPECT_EQ(synced().toList(), onlyNorwegian);
}

TEST_F(LanguageSync, AnEmptyListIsReplaced)
{
    store(QStringLiteral("nb"), QVariantList());
    EXPECT_EQ(synced().toList(), onlyNorwegian);
}

TEST_F(LanguageSync, WhatIsNoListOfStringsIsReplaced)
{
    for (const QVariant& wrong : {QVariant(QStringLiteral("nb")), QVariant(qint64{1}), QVariant(true),
                                  QVariant(QVariantList{QStringLiteral("nb"), qint64{1}})}) {
        store(QStringLiteral("nb"), wrong);
        EXPECT_EQ(synced().toList(), onlyNorwegian) << wrong.typeName();
    }
}

TEST_F(LanguageSync, ALanguageOfAnotherFormCountsAsNorwegian)
{
    for (const QString& unknown : {QStringLiteral("EN"), QStringLiteral("english"), QStringLiteral("de")}) {
        store(unknown, onlyEnglish);
        EXPECT_EQ(synced().toList(), onlyNorwegian) << qPrintable(unknown);
    }
}

TEST_F(LanguageSync, EachAssignmentSyncsAfterItIsStored)
{
    AppSettings settings(defaults);
    settings.appLanguage.set(AppLanguage::english);
    EXPECT_EQ(defaults.value(list).toList(), onlyEnglish);
    EXPECT_EQ(defaults.writes().first().first, QStringLiteral("appLanguage"));
    settings.appLanguage.set(AppLanguage::norwegian);
    EXPECT_EQ(defaults.value(list).toList(), onlyNorwegian);
}

TEST_F(LanguageSync, AnAssignmentThatAgreesLeavesTheListAlone)
{
    const QVariantList englishFirst{QStringLiteral("en"), QStringLiteral("nb")};
    store({}, englishFirst);
    AppSettings settings(defaults);
    settings.appLanguage.set(AppLanguage::english);
    EXPECT_EQ(defaults.value(list).toList(), englishFirst);
}

} // namespace
} // namespace tulvane
