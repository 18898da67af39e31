#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <QVariantList>

#include <gtest/gtest.h>

#include <limits>

namespace tulvane {
namespace {

QVariant loaded(const QString& key, const QVariant& stored)
{
    FakeUserDefaults defaults;
    return AppSettings(defaults).find(key)->loaded(stored);
}

QStringList keys()
{
    FakeUserDefaults defaults;
    const AppSettings settings(defaults);
    QStringList all;
    for (const AnySetting* const setting : settings.all())
        all.append(setting->key());
    return all;
}

TEST(SettingsTable, HasEveryKeyInOrder)
{
    EXPECT_EQ(
        keys().join(u' '),
        u"hotkeyMode modifierHotkey language selectedModelID insertionMethod restoreClipboard playSounds "
        "showHUD autoCapitalize appendTrailingSpace vocabularyPrompt maxRecordingSeconds "
        "hasCompletedOnboarding showInDock typingWordsPerMinute appLanguage clipboardExpirySeconds "
        "hapticFeedback keyboardAutoInsert appearance hideSetupChecklist hidePrivacyCard computingDevice "
        "readsKeyboards");
}

TEST(SettingsTable, ExactlyTheThreeKeptForOthersHaveNoWriter)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    QStringList kept;
    for (AnySetting* const setting : settings.all()) {
        EXPECT_EQ(setting->setValue(setting->value()), setting->writer() == SettingWriter::thisSystem)
            << qPrintable(setting->key());
        if (setting->writer() == SettingWriter::others)
            kept.append(setting->key());
    }
    EXPECT_EQ(kept,
              (QStringList{u"clipboardExpirySeconds"_qs, u"hapticFeedback"_qs, u"keyboardAutoInsert"_qs}));
}

TEST(SettingsTable, AnUnknownKeyIsFoundNowhere)
{
    FakeUserDefaults defaults;
    const AppSettings settings(defaults);
    EXPECT_EQ(settings.find(u"hotkeymode"_qs), nullptr);
    EXPECT_EQ(settings.find(u"AppleLanguages"_qs), nullptr);
    EXPECT_EQ(settings.find(QString()), nullptr);
}

TEST(SettingsTable, AnEnumerationTakesItsRawValuesOnly)
{
    EXPECT_EQ(loaded(u"hotkeyMode"_qs, u"hybrid"_qs), u"hybrid"_qs);
    for (const QVariant& wrong : {QVariant(), QVariant(u"Hold"_qs), QVariant(qint64{1}), QVariant(true),
                                  QVariant(QVariantList{u"hold"_qs})})
        EXPECT_EQ(loaded(u"hotkeyMode"_qs, wrong), u"toggle"_qs) << wrong.typeName();
}

TEST(SettingsTable, ATextIsAStringOrTheDigitsOfANumber)
{
    EXPECT_EQ(loaded(u"vocabularyPrompt"_qs, u"Ærlig 🎈\nÅse"_qs), u"Ærlig 🎈\nÅse"_qs);
    EXPECT_EQ(loaded(u"selectedModelID"_qs, u""_qs), u""_qs);
    EXPECT_EQ(loaded(u"vocabularyPrompt"_qs, qint64{42}), u"42"_qs);
    EXPECT_EQ(loaded(u"vocabularyPrompt"_qs, 1.5), u"1.5"_qs);
    EXPECT_EQ(loaded(u"vocabularyPrompt"_qs, 42LL).typeId(), QMetaType::QString);
    EXPECT_EQ(loaded(u"vocabularyPrompt"_qs, QVariantList{u"a"_qs}), u""_qs);
    EXPECT_EQ(loaded(u"selectedModelID"_qs, QVariant()), u"nb-whisper-medium-q5_0"_qs);
    EXPECT_EQ(loaded(u"selectedModelID"_qs, QVariantList{}), u"nb-whisper-medium-q5_0"_qs);
}

TEST(SettingsTable, ABooleanIsTrueOrFalseAndNothingElse)
{
    for (const QString& key : {u"restoreClipboard"_qs, u"playSounds"_qs, u"showHUD"_qs, u"autoCapitalize"_qs,
                               u"appendTrailingSpace"_qs, u"showInDock"_qs, u"hapticFeedback"_qs}) {
        EXPECT_EQ(loaded(key, false), QVariant(false)) << qPrintable(key);
        for (const QVariant& wrong :
             {QVariant(), QVariant(u"yes"_qs), QVariant(u"false"_qs), QVariant(qint64{0}), QVariant(0.0)})
            EXPECT_EQ(loaded(key, wrong), QVariant(true)) << qPrintable(key) << wrong.typeName();
    }
    EXPECT_EQ(loaded(u"keyboardAutoInsert"_qs, true), QVariant(true));
    EXPECT_EQ(loaded(u"keyboardAutoInsert"_qs, u"yes"_qs), QVariant(false));
    EXPECT_EQ(loaded(u"keyboardAutoInsert"_qs, qint64{1}), QVariant(false));
}

TEST(SettingsTable, APlainBooleanReadsAsTheAccessorDoes)
{
    for (const QString& key :
         {u"hasCompletedOnboarding"_qs, u"hideSetupChecklist"_qs, u"hidePrivacyCard"_qs}) {
        for (const QVariant& yes : {QVariant(true), QVariant(qint64{1}), QVariant(qint64{-7}), QVariant(0.5),
                                    QVariant(u"YES"_qs), QVariant(u"true"_qs)})
            EXPECT_EQ(loaded(key, yes), QVariant(true)) << qPrintable(key) << yes.typeName();
        for (const QVariant& no : {QVariant(), QVariant(false), QVariant(qint64{0}), QVariant(0.0),
                                   QVariant(u"NO"_qs), QVariant(u"maybe"_qs), QVariant(QVariantList{true})})
            EXPECT_EQ(loaded(key, no), QVariant(false)) << qPrintable(key) << no.typeName();
    }
}

TEST(SettingsTable, AnIntegerIsKeptWhateverItsSize)
{
    for (const qint64 number : {qint64{0}, qint64{-5}, qint64{7}, std::numeric_limits<qint64>::max(),
                                std::numeric_limits<qint64>::min()}) {
        EXPECT_EQ(loaded(u"maxRecordingSeconds"_qs, number), QVariant(number));
        EXPECT_EQ(loaded(u"typingWordsPerMinute"_qs, number), QVariant(number));
        EXPECT_EQ(loaded(u"clipboardExpirySeconds"_qs, number), QVariant(number));
    }
}

TEST(SettingsTable, WhatIsNoIntegerReadsAsTheDefault)
{
    for (const QVariant& wrong : {QVariant(), QVariant(u"60"_qs), QVariant(60.0), QVariant(true),
                                  QVariant(std::numeric_limits<quint64>::max())}) {
        EXPECT_EQ(loaded(u"maxRecordingSeconds"_qs, wrong), QVariant(qint64{300})) << wrong.typeName();
        EXPECT_EQ(loaded(u"typingWordsPerMinute"_qs, wrong), QVariant(qint64{40})) << wrong.typeName();
        EXPECT_EQ(loaded(u"clipboardExpirySeconds"_qs, wrong), QVariant(qint64{120})) << wrong.typeName();
    }
}

} // namespace
} // namespace tulvane
