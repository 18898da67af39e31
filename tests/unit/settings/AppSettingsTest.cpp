#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>

#include <QSignalSpy>
#include <QVariantMap>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

using Write = FakeUserDefaults::Write;

QVariantMap live(const AppSettings& settings)
{
    QVariantMap values;
    for (const AnySetting* const setting : settings.all())
        values.insert(setting->key(), setting->value());
    return values;
}

TEST(AppSettings, AnEmptyDomainYieldsTheDefaults)
{
    FakeUserDefaults defaults;
    const AppSettings settings(defaults);
    EXPECT_EQ(settings.hotkeyMode(), HotkeyMode::toggle);
    EXPECT_EQ(settings.modifierHotkey(), ModifierHotkey::none);
    EXPECT_EQ(settings.language(), TranscriptionLanguage::norwegianBokmal);
    EXPECT_EQ(settings.selectedModelID(), u"nb-whisper-medium-q5_0");
    EXPECT_EQ(settings.insertionMethod(), InsertionMethod::paste);
    EXPECT_TRUE(settings.restoreClipboard());
    EXPECT_TRUE(settings.playSounds());
    EXPECT_TRUE(settings.showHUD());
    EXPECT_TRUE(settings.autoCapitalize());
    EXPECT_TRUE(settings.appendTrailingSpace());
    EXPECT_EQ(settings.vocabularyPrompt(), u"");
    EXPECT_EQ(settings.maxRecordingSeconds(), 300);
    EXPECT_FALSE(settings.hasCompletedOnboarding());
    EXPECT_TRUE(settings.showInDock());
    EXPECT_EQ(settings.typingWordsPerMinute(), 40);
    EXPECT_EQ(settings.appLanguage(), AppLanguage::norwegian);
    EXPECT_EQ(settings.clipboardExpirySeconds(), 120);
    EXPECT_TRUE(settings.hapticFeedback());
    EXPECT_FALSE(settings.keyboardAutoInsert());
    EXPECT_EQ(settings.appearance(), AppearanceMode::system);
    EXPECT_FALSE(settings.hideSetupChecklist());
    EXPECT_FALSE(settings.hidePrivacyCard());
    EXPECT_EQ(settings.computingDevice(), u"auto");
    EXPECT_FALSE(settings.readsKeyboards());
    EXPECT_TRUE(defaults.writes().isEmpty()) << "loading writes nothing";
}

QVariantMap otherThanDefaults()
{
    return {{u"hotkeyMode"_qs, u"hybrid"_qs},
            {u"modifierHotkey"_qs, u"fn"_qs},
            {u"language"_qs, u"auto"_qs},
            {u"selectedModelID"_qs, u"nb-whisper-small-q5_0"_qs},
            {u"insertionMethod"_qs, u"accessibilityThenPaste"_qs},
            {u"restoreClipboard"_qs, false},
            {u"playSounds"_qs, false},
            {u"showHUD"_qs, false},
            {u"autoCapitalize"_qs, false},
            {u"appendTrailingSpace"_qs, false},
            {u"vocabularyPrompt"_qs, u"Tromsø, Åse"_qs},
            {u"maxRecordingSeconds"_qs, qint64{-3}},
            {u"hasCompletedOnboarding"_qs, true},
            {u"showInDock"_qs, false},
            {u"typingWordsPerMinute"_qs, qint64{0}},
            {u"appLanguage"_qs, u"en"_qs},
            {u"clipboardExpirySeconds"_qs, qint64{5}},
            {u"hapticFeedback"_qs, false},
            {u"keyboardAutoInsert"_qs, true},
            {u"appearance"_qs, u"dark"_qs},
            {u"hideSetupChecklist"_qs, true},
            {u"hidePrivacyCard"_qs, true},
            {u"computingDevice"_qs, u"GeForce"_qs},
            {u"readsKeyboards"_qs, true}};
}

TEST(AppSettings, EveryKeyIsLoaded)
{
    const auto store = std::make_shared<FakeUserDefaults::Store>();
    store->insert(FakeUserDefaults::domainName, otherThanDefaults());
    FakeUserDefaults defaults(store);
    const AppSettings settings(defaults);
    EXPECT_EQ(live(settings), otherThanDefaults());
}

TEST(AppSettings, EveryAssignmentIsToldAndWrittenUnderItsKeyAlsoWhenNothingChanged)
{
    FakeUserDefaults none;
    const AppSettings table(none);
    for (const AnySetting* const row : table.all()) {
        if (row->writer() == SettingWriter::others)
            continue;
        const QString key = row->key();
        SCOPED_TRACE(key.toStdString());
        FakeUserDefaults defaults;
        AppSettings settings(defaults);
        AnySetting& setting = *settings.find(key);
        const QSignalSpy told(&setting, &AnySetting::changed);
        const QVariant value = otherThanDefaults().value(key);
        ASSERT_TRUE(setting.setValue(value));
        ASSERT_TRUE(setting.setValue(value));
        EXPECT_EQ(setting.value(), value);
        EXPECT_EQ(told.count(), 2);
        const QList<Write> writes = defaults.writes();
        EXPECT_EQ(writes.count(Write(key, value)), 2);
        EXPECT_EQ(writes.size(), key == u"appLanguage" ? 3 : 2);
        EXPECT_EQ(writes.first().second.typeId(), setting.defaultValue().typeId());
    }
}

TEST(AppSettings, AnObserverHearsBeforeTheWriteAndReadsTheNewValue)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    bool heard = false;
    QObject::connect(&settings.showHUD, &AnySetting::changed, &settings, [&] {
        heard = true;
        EXPECT_FALSE(settings.showHUD());
        EXPECT_TRUE(defaults.writes().isEmpty());
    });
    settings.showHUD.set(false);
    EXPECT_TRUE(heard);
    EXPECT_EQ(defaults.value(u"showHUD"_qs), QVariant(false));
}

TEST(AppSettings, WhatIsStoredEqualsWhatIsLiveWhenAnObserverAssignsToo)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    QObject::connect(&settings.maxRecordingSeconds, &AnySetting::changed, &settings, [&] {
        if (settings.maxRecordingSeconds() > 1800)
            settings.maxRecordingSeconds.set(1800);
    });
    settings.maxRecordingSeconds.set(9999);
    EXPECT_EQ(settings.maxRecordingSeconds(), 1800);
    EXPECT_EQ(defaults.value(u"maxRecordingSeconds"_qs), QVariant(qint64{1800}));
}

TEST(AppSettings, NothingIsClampedWhenItIsAssigned)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    settings.maxRecordingSeconds.set(-1);
    settings.typingWordsPerMinute.set(0);
    settings.selectedModelID.set(u"no such model"_qs);
    EXPECT_EQ(defaults.value(u"maxRecordingSeconds"_qs), QVariant(qint64{-1}));
    EXPECT_EQ(defaults.value(u"typingWordsPerMinute"_qs), QVariant(qint64{0}));
    EXPECT_EQ(settings.selectedModelID(), u"no such model");
}

TEST(AppSettings, AStringForABooleanReadsAsTheDefaultAndStaysStored)
{
    FakeUserDefaults defaults;
    ASSERT_TRUE(defaults.set(u"playSounds"_qs, u"yes"_qs));
    const AppSettings settings(defaults);
    EXPECT_TRUE(settings.playSounds());
    EXPECT_EQ(defaults.value(u"playSounds"_qs), u"yes"_qs);
}

TEST(AppSettings, WhatIsKeptForOthersIsNeverWritten)
{
    const auto store = std::make_shared<FakeUserDefaults::Store>();
    store->insert(FakeUserDefaults::domainName,
                  {{u"clipboardExpirySeconds"_qs, u"soon"_qs}, {u"keyboardAutoInsert"_qs, true}});
    FakeUserDefaults defaults(store);
    AppSettings settings(defaults);
    for (AnySetting* const setting : settings.all())
        (void)setting->setValue(otherThanDefaults().value(setting->key()));
    const QVariantMap after = store->value(FakeUserDefaults::domainName);
    EXPECT_EQ(after.value(u"clipboardExpirySeconds"_qs), u"soon"_qs);
    EXPECT_EQ(after.value(u"keyboardAutoInsert"_qs), QVariant(true));
    EXPECT_FALSE(after.contains(u"hapticFeedback"_qs));
}

TEST(AppSettings, AFailedWriteIsToldAndTheValueHolds)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    const DefaultsError full = DefaultsError::notWritten(u"/there"_qs, u"No space left on device"_qs);
    defaults.failWrites(full);
    QStringList failedKeys;
    QObject::connect(&settings, &AppSettings::writeFailed, &settings,
                     [&](const QString& key, const DefaultsError& error) {
                         failedKeys.append(key);
                         EXPECT_EQ(error, full);
                     });
    settings.vocabularyPrompt.set(u"Åse"_qs);
    EXPECT_EQ(failedKeys, QStringList{u"vocabularyPrompt"_qs});
    EXPECT_EQ(settings.vocabularyPrompt(), u"Åse");
}

TEST(AppSettings, TroubleWithTheStoredPreferencesIsKeptAndTold)
{
    FakeUserDefaults defaults;
    AppSettings settings(defaults);
    EXPECT_FALSE(settings.trouble());
    int told = 0;
    QObject::connect(&settings, &AppSettings::troubled, &settings, [&told] { ++told; });
    const DefaultsError damaged = DefaultsError::damaged(u"/there"_qs, u"/there.damaged"_qs);
    defaults.tell(damaged);
    EXPECT_EQ(settings.trouble(), damaged);
    EXPECT_EQ(told, 1);
}

TEST(AppSettings, ATitleIsWhatTheSettingsPageShows)
{
    FakeUserDefaults defaults;
    const AppSettings settings(defaults);
    EXPECT_EQ(settings.playSounds.title(), u"Sounds");
    EXPECT_EQ(settings.hidePrivacyCard.title(), u"");
}

TEST(AppSettings, KeepsTheDefaultsItWasMadeFrom)
{
    FakeUserDefaults defaults;
    const AppSettings settings(defaults);
    EXPECT_EQ(&settings.defaults(), &defaults);
}

} // namespace
} // namespace tulvane
