#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

const QString languages = QStringLiteral("AppleLanguages");

struct InterfaceLanguage : ::testing::Test {
    FakeUserDefaults defaults;

    [[nodiscard]] QVariantList stored() const { return defaults.value(languages).toList(); }
    void store(const QVariant& value) { ASSERT_TRUE(defaults.set(languages, value)); }
    [[nodiscard]] qsizetype languageWrites() const
    {
        const QList<FakeUserDefaults::Write> writes = defaults.writes();
        return std::ranges::count(writes, languages, &FakeUserDefaults::Write::first);
    }
};

TEST_F(InterfaceLanguage, AssigningEnglishLeavesAListThatBeginsWithEnglish)
{
    store(QStringList{u"en"_qs, u"nb"_qs});
    AppSettings settings(defaults);
    settings.setAppLanguage(AppLanguage::english);
    EXPECT_EQ(stored(), (QVariantList{u"en"_qs, u"nb"_qs}));
    EXPECT_EQ(languageWrites(), 1) << "only the test's own";
}

TEST_F(InterfaceLanguage, AssigningEnglishReplacesAnotherList)
{
    store(QStringList{u"nb"_qs, u"en"_qs});
    AppSettings settings(defaults);
    settings.setAppLanguage(AppLanguage::english);
    EXPECT_EQ(stored(), QVariantList{u"en"_qs});
}

TEST_F(InterfaceLanguage, AssigningEnglishMakesAMissingList)
{
    AppSettings settings(defaults);
    settings.setAppLanguage(AppLanguage::english);
    EXPECT_EQ(stored(), QVariantList{u"en"_qs});
}

TEST_F(InterfaceLanguage, AssigningNorwegianMakesItNorwegian)
{
    store(QStringList{u"en"_qs});
    AppSettings settings(defaults);
    settings.setAppLanguage(AppLanguage::norwegian);
    EXPECT_EQ(stored(), QVariantList{u"nb"_qs});
}

TEST_F(InterfaceLanguage, WhatIsNoListOfStringsIsReplaced)
{
    for (const QVariant& wrong : {QVariant(u"nb"_qs), QVariant(QVariantList{}), QVariant(qint64{1}),
                                  QVariant(QVariantList{u"nb"_qs, qint64{1}})}) {
        store(wrong);
        AppSettings(defaults).syncInterfaceLanguage();
        EXPECT_EQ(stored(), QVariantList{u"nb"_qs}) << wrong.typeName();
    }
}

TEST_F(InterfaceLanguage, TheCodeComesFromTheStoredKey)
{
    AppSettings settings(defaults);
    ASSERT_TRUE(defaults.set(u"appLanguage"_qs, u"en"_qs));
    settings.syncInterfaceLanguage();
    EXPECT_EQ(stored(), QVariantList{u"en"_qs});
    ASSERT_TRUE(defaults.set(u"appLanguage"_qs, u"EN"_qs));
    settings.syncInterfaceLanguage();
    EXPECT_EQ(stored(), QVariantList{u"nb"_qs});
}

TEST_F(InterfaceLanguage, ARegionalVariantIsAnotherLanguage)
{
    store(QStringList{u"en-GB"_qs});
    AppSettings settings(defaults);
    settings.setAppLanguage(AppLanguage::english);
    EXPECT_EQ(stored(), QVariantList{u"en"_qs});
}

TEST_F(InterfaceLanguage, TheLanguageIsStoredBeforeTheListIsSynced)
{
    AppSettings settings(defaults);
    settings.setAppLanguage(AppLanguage::english);
    ASSERT_EQ(defaults.writes().size(), 2);
    EXPECT_EQ(defaults.writes().first().first, u"appLanguage");
    EXPECT_EQ(defaults.writes().last().first, languages);
}

} // namespace
} // namespace tulvane
