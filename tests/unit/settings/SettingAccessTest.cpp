#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

const QStringList models{u"small"_qs, u"medium"_qs};

std::optional<QVariant> permitted(const QString& key, const QString& word)
{
    FakeUserDefaults defaults;
    return AppSettings(defaults).find(key)->permitted(word, models);
}

TEST(SettingAccess, EveryDefaultIsInStoredForm)
{
    FakeUserDefaults defaults;
    const AppSettings settings(defaults);
    for (const AnySetting* const setting : settings.all()) {
        const QVariant value = setting->value();
        EXPECT_EQ(value, setting->defaultValue()) << qPrintable(setting->key());
        EXPECT_EQ(value.typeId(), setting->defaultValue().typeId()) << qPrintable(setting->key());
    }
}

TEST(SettingAccess, AValueOfAnotherFormIsNotAssigned)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    EXPECT_FALSE(settings.find(u"hotkeyMode"_qs)->setValue(u"Hold"_qs));
    EXPECT_FALSE(settings.find(u"playSounds"_qs)->setValue(u"false"_qs));
    EXPECT_FALSE(settings.find(u"maxRecordingSeconds"_qs)->setValue(u"60"_qs));
    EXPECT_FALSE(settings.find(u"maxRecordingSeconds"_qs)->setValue(60.0));
    EXPECT_FALSE(settings.find(u"vocabularyPrompt"_qs)->setValue(qint64{1}));
    EXPECT_FALSE(settings.find(u"hapticFeedback"_qs)->setValue(false));
    EXPECT_TRUE(defaults.writes().isEmpty());
}

TEST(SettingAccess, AnEnumerationPermitsItsRawValues)
{
    EXPECT_EQ(permitted(u"language"_qs, u"nn"_qs), QVariant(u"nn"_qs));
    EXPECT_FALSE(permitted(u"language"_qs, u"NN"_qs));
    EXPECT_FALSE(permitted(u"language"_qs, u"norwegianNynorsk"_qs));
    EXPECT_FALSE(permitted(u"language"_qs, QString()));
}

TEST(SettingAccess, ABooleanPermitsTrueAndFalse)
{
    for (const QString& key : {u"playSounds"_qs, u"hidePrivacyCard"_qs}) {
        EXPECT_EQ(permitted(key, u"true"_qs), QVariant(true));
        EXPECT_EQ(permitted(key, u"false"_qs), QVariant(false));
        for (const QString& wrong : {u"yes"_qs, u"1"_qs, u"True"_qs, u""_qs, u"true "_qs})
            EXPECT_FALSE(permitted(key, wrong)) << qPrintable(wrong);
    }
}

TEST(SettingAccess, AnIntegerPermitsWhatThePageOffers)
{
    for (const auto& [key, word] : {std::pair(u"maxRecordingSeconds"_qs, u"10"_qs),
                                    {u"maxRecordingSeconds"_qs, u"1800"_qs},
                                    {u"typingWordsPerMinute"_qs, u"15"_qs},
                                    {u"typingWordsPerMinute"_qs, u"120"_qs}}) {
        const auto value = permitted(key, word);
        EXPECT_EQ(value, QVariant(word.toLongLong())) << qPrintable(word);
        EXPECT_EQ(value.value_or(QVariant()).typeId(), QMetaType::LongLong) << qPrintable(word);
    }
    for (const QString& wrong :
         {u"0"_qs, u"9"_qs, u"11"_qs, u"1801"_qs, u"1810"_qs, u"-10"_qs, u"+10"_qs, u"010"_qs, u" 10"_qs,
          u"10.0"_qs, u"1e2"_qs, u"ten"_qs, u""_qs, u"99999999999999999990"_qs})
        EXPECT_FALSE(permitted(u"maxRecordingSeconds"_qs, wrong)) << qPrintable(wrong);
    for (const QString& wrong : {u"10"_qs, u"14"_qs, u"16"_qs, u"121"_qs, u"125"_qs})
        EXPECT_FALSE(permitted(u"typingWordsPerMinute"_qs, wrong)) << qPrintable(wrong);
}

TEST(SettingAccess, AModelIsOneOfTheCatalogueAndAPromptIsAnyText)
{
    EXPECT_EQ(permitted(u"selectedModelID"_qs, u"small"_qs), QVariant(u"small"_qs));
    EXPECT_FALSE(permitted(u"selectedModelID"_qs, u"large"_qs));
    EXPECT_EQ(permitted(u"vocabularyPrompt"_qs, u"large"_qs), QVariant(u"large"_qs));
    EXPECT_EQ(permitted(u"vocabularyPrompt"_qs, u""_qs), QVariant(u""_qs));
}

} // namespace
} // namespace tulvane
