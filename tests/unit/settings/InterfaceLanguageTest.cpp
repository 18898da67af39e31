#include <settings/HotkeyMode.h>
#include <settings/InterfaceLanguage.h>
#include <settings/ModifierHotkey.h>
#include <settings/TranscriptionLanguage.h>

#include <QLocale>

#include <gtest/gtest.h>

namespace tulvane {

namespace {

class InterfaceLanguageTest : public ::testing::Test {
protected:
    void TearDown() override { installInterfaceLanguage(AppLanguage::english); }
};

TEST_F(InterfaceLanguageTest, EachLanguageHasItsWordsAndItsNumbers)
{
    installInterfaceLanguage(AppLanguage::norwegian);
    EXPECT_EQ(title(HotkeyMode::hold), QStringLiteral("Hold inne for å snakke"));
    EXPECT_EQ(QLocale().toString(1.5, 'f', 1), QStringLiteral("1,5"));
    installInterfaceLanguage(AppLanguage::english);
    EXPECT_EQ(title(HotkeyMode::hold), QStringLiteral("Hold to talk"));
    EXPECT_EQ(QLocale().toString(1.5, 'f', 1), QStringLiteral("1.5"));
}

TEST_F(InterfaceLanguageTest, EnglishHasTheWordsOfThisDesktop)
{
    installInterfaceLanguage(AppLanguage::english);
    EXPECT_EQ(title(ModifierHotkey::rightOption), QStringLiteral("Right Alt (AltGr)"));
}

TEST_F(InterfaceLanguageTest, TheNamesOfTheNorwegianLanguagesAreTheSameInBoth)
{
    for (const AppLanguage language : {AppLanguage::norwegian, AppLanguage::english}) {
        installInterfaceLanguage(language);
        EXPECT_EQ(title(TranscriptionLanguage::norwegianBokmal), QStringLiteral("Norsk bokmål"));
        EXPECT_EQ(title(TranscriptionLanguage::norwegianNynorsk), QStringLiteral("Norsk nynorsk"));
    }
}

TEST_F(InterfaceLanguageTest, TheCommandLineSpeaksEnglishBesideANorwegianInterface)
{
    installInterfaceLanguage(AppLanguage::norwegian);
    {
        const ScopedEnglish english;
        EXPECT_EQ(title(HotkeyMode::hold), QStringLiteral("Hold to talk"));
    }
    EXPECT_EQ(title(HotkeyMode::hold), QStringLiteral("Hold inne for å snakke"));
}

TEST_F(InterfaceLanguageTest, EnglishWithinEnglishEndsWithTheOuterOne)
{
    installInterfaceLanguage(AppLanguage::norwegian);
    {
        const ScopedEnglish outer;
        {
            const ScopedEnglish inner;
        }
        EXPECT_EQ(title(HotkeyMode::hold), QStringLiteral("Hold to talk"));
    }
    EXPECT_EQ(title(HotkeyMode::hold), QStringLiteral("Hold inne for å snakke"));
}

TEST_F(InterfaceLanguageTest, DatesTimesAndNumbersAreTheUsersWhateverTheInterfaceSpeaks)
{
    const QLocale norwegian(QLocale::NorwegianBokmal, QLocale::Norway);
    const QLocale british(QLocale::English, QLocale::UnitedKingdom);
    for (const AppLanguage language : allCases<AppLanguage>()) {
        EXPECT_EQ(formatsFor(language, norwegian), norwegian);
        EXPECT_EQ(formatsFor(language, british), british);
    }
}

TEST_F(InterfaceLanguageTest, WithoutALanguageOfTheSystemTheFormatsAreTheInterfaces)
{
    EXPECT_EQ(formatsFor(AppLanguage::norwegian, QLocale::c()).language(), QLocale::NorwegianBokmal);
    EXPECT_EQ(formatsFor(AppLanguage::english, QLocale::c()).language(), QLocale::English);
}

} // namespace

} // namespace tulvane
