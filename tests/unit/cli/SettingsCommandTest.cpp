#include <app/cli/SettingsCommand.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <QBuffer>

#include <gtest/gtest.h>

namespace tulvane::cli {
namespace {

struct SettingsCommand : ::testing::Test {
    FakeUserDefaults defaults;
    QString out;
    QString err;

    int run(const QStringList& arguments)
    {
        out.clear();
        err.clear();
        AppSettings settings(defaults);
        QBuffer in;
        QTextStream outStream(&out);
        QTextStream errStream(&err);
        Console console{in, outStream, errStream};
        return runSettings(arguments, console, settings,
                           {u"nb-whisper-small-q5_0"_qs, u"nb-whisper-medium-q5_0"_qs});
    }

    void expectUsageError(const QStringList& arguments, const QString& message)
    {
        EXPECT_EQ(run(arguments), ExitStatus::wrongUsage);
        EXPECT_EQ(err, u"tulvane settings: " + message + u" (tulvane settings --help)\n");
        EXPECT_EQ(out, QString());
        EXPECT_TRUE(defaults.writes().isEmpty());
    }
};

TEST_F(SettingsCommand, ListShowsEveryKeyInOrderWithItsType)
{
    EXPECT_EQ(run({u"list"_qs}), ExitStatus::done);
    EXPECT_EQ(err, QString());
    EXPECT_EQ(out, u"hotkeyMode = \"toggle\"\n"
                   "modifierHotkey = \"none\"\n"
                   "language = \"no\"\n"
                   "selectedModelID = \"nb-whisper-medium-q5_0\"\n"
                   "insertionMethod = \"paste\"\n"
                   "restoreClipboard = true\n"
                   "playSounds = true\n"
                   "showHUD = true\n"
                   "autoCapitalize = true\n"
                   "appendTrailingSpace = true\n"
                   "vocabularyPrompt = \"\"\n"
                   "maxRecordingSeconds = 300\n"
                   "hasCompletedOnboarding = false\n"
                   "showInDock = true\n"
                   "typingWordsPerMinute = 40\n"
                   "appLanguage = \"nb\"\n"
                   "clipboardExpirySeconds = 120\n"
                   "hapticFeedback = true\n"
                   "keyboardAutoInsert = false\n"
                   "appearance = \"system\"\n"
                   "hideSetupChecklist = false\n"
                   "hidePrivacyCard = false\n"
                   "computingDevice = \"auto\"\n"
                   "readsKeyboards = false\n");
    EXPECT_TRUE(defaults.writes().isEmpty());
}

TEST_F(SettingsCommand, ATextOfSeveralLinesStaysOnOneLineOfTheList)
{
    ASSERT_TRUE(defaults.set(u"vocabularyPrompt"_qs, u"Åse \"x\"\nBø"_qs));
    EXPECT_EQ(run({u"list"_qs}), ExitStatus::done);
    EXPECT_TRUE(out.contains(u"vocabularyPrompt = \"Åse \\\"x\\\"\\nBø\"\n"_qs)) << qPrintable(out);
    EXPECT_EQ(out.count(u'\n'), AppSettings(defaults).all().size());
}

TEST_F(SettingsCommand, AnIntegerOfAnySizeIsListedToItsLastDigit)
{
    ASSERT_TRUE(defaults.set(u"maxRecordingSeconds"_qs, std::numeric_limits<qint64>::max()));
    EXPECT_EQ(run({u"list"_qs}), ExitStatus::done);
    EXPECT_TRUE(out.contains(u"maxRecordingSeconds = 9223372036854775807\n"_qs)) << qPrintable(out);
}

TEST_F(SettingsCommand, GetShowsTheBareValue)
{
    ASSERT_TRUE(defaults.set(u"vocabularyPrompt"_qs, u"Åse\nBø"_qs));
    ASSERT_TRUE(defaults.set(u"playSounds"_qs, false));
    ASSERT_TRUE(defaults.set(u"clipboardExpirySeconds"_qs, 7));
    for (const auto& [key, shown] : {std::pair(u"vocabularyPrompt"_qs, u"Åse\nBø\n"_qs),
                                     {u"playSounds"_qs, u"false\n"_qs},
                                     {u"clipboardExpirySeconds"_qs, u"7\n"_qs},
                                     {u"language"_qs, u"no\n"_qs}}) {
        EXPECT_EQ(run({u"get"_qs, key}), ExitStatus::done);
        EXPECT_EQ(out, shown);
    }
}

TEST_F(SettingsCommand, SetStoresTheTypedValue)
{
    for (const auto& [key, word, stored] :
         {std::tuple(u"hotkeyMode"_qs, u"hold"_qs, QVariant(u"hold"_qs)),
          {u"playSounds"_qs, u"false"_qs, QVariant(false)},
          {u"maxRecordingSeconds"_qs, u"60"_qs, QVariant(qint64{60})},
          {u"selectedModelID"_qs, u"nb-whisper-small-q5_0"_qs, QVariant(u"nb-whisper-small-q5_0"_qs)},
          {u"vocabularyPrompt"_qs, u"300"_qs, QVariant(u"300"_qs)},
          {u"vocabularyPrompt"_qs, u""_qs, QVariant(u""_qs)}}) {
        EXPECT_EQ(run({u"set"_qs, key, word}), ExitStatus::done) << qPrintable(err);
        EXPECT_EQ(out + err, QString());
        EXPECT_EQ(defaults.value(key), stored);
        EXPECT_EQ(defaults.value(key).typeId(), stored.typeId());
    }
}

TEST_F(SettingsCommand, SettingTheInterfaceLanguageSyncsTheSystemsList)
{
    EXPECT_EQ(run({u"set"_qs, u"appLanguage"_qs, u"en"_qs}), ExitStatus::done);
    EXPECT_EQ(defaults.value(u"AppleLanguages"_qs), QVariant(QVariantList{u"en"_qs}));
    EXPECT_EQ(err, u"The interface changes its language when Tulvane starts the next time.\n");
}

TEST_F(SettingsCommand, AValueThatBeginsWithADashComesAfterTwo)
{
    EXPECT_EQ(run({u"set"_qs, u"vocabularyPrompt"_qs, u"--"_qs, u"-x"_qs}), ExitStatus::done)
        << qPrintable(err);
    EXPECT_EQ(defaults.value(u"vocabularyPrompt"_qs), u"-x"_qs);
}

TEST_F(SettingsCommand, AValueThatIsNotPermittedIsRefusedWithThosePermitted)
{
    expectUsageError({u"set"_qs, u"hotkeyMode"_qs, u"Hold"_qs},
                     u"hotkeyMode cannot be “Hold”; permitted: toggle, hold, hybrid."_qs);
    expectUsageError({u"set"_qs, u"playSounds"_qs, u"yes"_qs},
                     u"playSounds cannot be “yes”; permitted: true, false."_qs);
    expectUsageError({u"set"_qs, u"hidePrivacyCard"_qs, u"1"_qs},
                     u"hidePrivacyCard cannot be “1”; permitted: true, false."_qs);
    expectUsageError({u"set"_qs, u"maxRecordingSeconds"_qs, u"5"_qs},
                     u"maxRecordingSeconds cannot be “5”; permitted: 10 to 1800 in steps of 10."_qs);
    expectUsageError({u"set"_qs, u"typingWordsPerMinute"_qs, u"121"_qs},
                     u"typingWordsPerMinute cannot be “121”; permitted: 15 to 120 in steps of 5."_qs);
    expectUsageError(
        {u"set"_qs, u"selectedModelID"_qs, u"%1"_qs},
        u"selectedModelID cannot be “%1”; permitted: nb-whisper-small-q5_0, nb-whisper-medium-q5_0."_qs);
}

TEST_F(SettingsCommand, WhatIsKeptForOthersIsRefused)
{
    for (const auto& [key, word] : {std::pair(u"clipboardExpirySeconds"_qs, u"120"_qs),
                                    {u"hapticFeedback"_qs, u"true"_qs},
                                    {u"keyboardAutoInsert"_qs, u"false"_qs}})
        expectUsageError({u"set"_qs, key, word},
                         key + u" is kept for other programs; this one never changes it.");
}

TEST_F(SettingsCommand, WrongWordsAreToldInOneLine)
{
    expectUsageError({}, u"list | get KEY | set KEY VALUE is missing."_qs);
    expectUsageError({u"sing"_qs}, u"there is no action “sing”."_qs);
    expectUsageError({u"list"_qs, u"language"_qs}, u"“language” is one word too many."_qs);
    expectUsageError({u"get"_qs}, u"KEY is missing."_qs);
    expectUsageError({u"get"_qs, u"language"_qs, u"no"_qs}, u"“no” is one word too many."_qs);
    expectUsageError({u"set"_qs, u"language"_qs}, u"VALUE is missing."_qs);
    expectUsageError({u"set"_qs, u"language"_qs, u"no"_qs, u"nn"_qs}, u"“nn” is one word too many."_qs);
    expectUsageError({u"get"_qs, u"Language"_qs}, u"there is no setting “Language”."_qs);
    expectUsageError({u"set"_qs, u"AppleLanguages"_qs, u"en"_qs},
                     u"there is no setting “AppleLanguages”."_qs);
}

TEST_F(SettingsCommand, AFailedWriteEndsWithItsReason)
{
    defaults.failWrites(DefaultsError::notWritten(u"/there.json"_qs, u"No space left on device"_qs));
    EXPECT_EQ(run({u"set"_qs, u"language"_qs, u"nn"_qs}), ExitStatus::failed);
    EXPECT_EQ(err, u"tulvane: The setting could not be saved to /there.json: No space left on device\n");
    EXPECT_EQ(out, QString());
}

TEST_F(SettingsCommand, HelpTellsTheActions)
{
    EXPECT_EQ(run({u"--help"_qs}), ExitStatus::done);
    EXPECT_TRUE(out.startsWith(u"Usage: tulvane settings list | get KEY | set KEY VALUE [options]\n"_qs))
        << qPrintable(out);
    EXPECT_TRUE(out.contains(u"begins with a dash comes after --."_qs));
}

} // namespace
} // namespace tulvane::cli
