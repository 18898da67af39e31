#include <base/Translate.h>
#include <support/ui/UiWorld.h>
#include <ui/viewmodels/SetupViewModel.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QQuickView>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

/// A world in which nothing is set up.
class SetupViewModelTest : public testing::Test {
protected:
    SetupViewModelTest()
    {
        world.privacy.microphoneAccess = MicrophoneAccess::notDetermined;
        world.privacy.accessibilityGranted = false;
        world.permissions.refresh();
        world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    }

    [[nodiscard]] SetupViewModel& setup() { return *world.ui.models().setup(); }
    [[nodiscard]] bool isDone(const QString& id)
    {
        const auto items = setup().items();
        return std::ranges::find(items, id, &SetupItem::id)->isDone;
    }

    UiWorld world;
};

TEST_F(SetupViewModelTest, ListsFourEssentialItemsAndThreeTips)
{
    struct Row {
        const char* id;
        const char* title;
        const char* symbol;
        bool isEssential;
    };
    const std::array rows{
        Row{"mic", "Allow microphone access", "mic.fill", true},
        Row{"ax", "Grant Accessibility so text can be typed for you", "accessibility", true},
        Row{"model", "Download a speech model", "waveform", true},
        Row{"hotkey", "Choose a hotkey", "keyboard", true},
        Row{"first", "Dictate your first sentence", "text.cursor", false},
        Row{"vocab", "Add names and jargon to your vocabulary", "character.book.closed.fill", false},
        Row{"hold", "Try hold-to-talk with a single key", "hand.tap.fill", false}};
    const auto items = setup().items();
    ASSERT_EQ(items.size(), static_cast<qsizetype>(rows.size()));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const SetupItem& item = items.at(static_cast<qsizetype>(i));
        EXPECT_EQ(item.id, QString::fromUtf8(rows.at(i).id));
        EXPECT_EQ(item.title, QString::fromUtf8(rows.at(i).title));
        EXPECT_EQ(item.symbol, QString::fromUtf8(rows.at(i).symbol));
        EXPECT_EQ(item.isEssential, rows.at(i).isEssential) << rows.at(i).id;
        EXPECT_FALSE(item.isDone) << rows.at(i).id;
    }
    EXPECT_EQ(setup().progress(), QStringLiteral("0/7 steps completed"));
    EXPECT_EQ(setup().missingEssentials(), 4);
    EXPECT_EQ(setup().missingText(), QStringLiteral("4 steps left."));
}

TEST_F(SetupViewModelTest, TheStatesHaveTheirLabels)
{
    EXPECT_EQ(label(SetupStepState::done), QStringLiteral("Done"));
    EXPECT_EQ(label(SetupStepState::todo), QStringLiteral("To do"));
    EXPECT_EQ(label(SetupStepState::optional), QStringLiteral("Optional"));
    const QVariantList objects = setup().itemObjects();
    EXPECT_EQ(objects.at(0).toMap().value(QStringLiteral("label")), QStringLiteral("To do"));
    EXPECT_EQ(objects.at(4).toMap().value(QStringLiteral("label")), QStringLiteral("Optional"));
    world.settings.hotkeyMode.set(HotkeyMode::hold);
    EXPECT_EQ(setup().itemObjects().at(6).toMap().value(QStringLiteral("label")), QStringLiteral("Done"));
}

TEST_F(SetupViewModelTest, OnlyAnAuthorisedMicrophoneIsDone)
{
    for (const auto access : {MicrophoneAccess::notDetermined, MicrophoneAccess::restricted,
                              MicrophoneAccess::denied, MicrophoneAccess::authorized}) {
        world.privacy.microphoneAccess = access;
        world.permissions.refresh();
        EXPECT_EQ(isDone(QStringLiteral("mic")), access == MicrophoneAccess::authorized);
    }
}

TEST_F(SetupViewModelTest, TrustForAccessibilityIsDone)
{
    world.privacy.accessibilityGranted = true;
    EXPECT_FALSE(isDone(QStringLiteral("ax"))) << "as last read";
    world.permissions.refresh();
    EXPECT_TRUE(isDone(QStringLiteral("ax")));
}

TEST_F(SetupViewModelTest, TheSelectedModelMustBeThere)
{
    world.installModel(QStringLiteral("nb-whisper-medium-q5_0"));
    EXPECT_TRUE(isDone(QStringLiteral("model")));
    world.settings.selectedModelID.set(QStringLiteral("nb-whisper-medium-verbatim-q5_0"));
    EXPECT_FALSE(isDone(QStringLiteral("model")));
}

TEST_F(SetupViewModelTest, AnUnknownModelStandsForTheOneOfANewUser)
{
    world.settings.selectedModelID.set(QStringLiteral("gone"));
    EXPECT_FALSE(isDone(QStringLiteral("model")));
    world.installModel(QStringLiteral("nb-whisper-medium-q5_0"));
    EXPECT_TRUE(isDone(QStringLiteral("model")));
}

TEST_F(SetupViewModelTest, AKeyCombinationOrASingleKeyIsAHotkey)
{
    world.settings.modifierHotkey.set(ModifierHotkey::rightControl);
    EXPECT_TRUE(isDone(QStringLiteral("hotkey")));
    world.settings.modifierHotkey.set(ModifierHotkey::none);
    EXPECT_FALSE(isDone(QStringLiteral("hotkey")));
    world.shortcuts.setShortcut(Shortcut{49, carbon::option}, ShortcutName::dictate());
    EXPECT_TRUE(isDone(QStringLiteral("hotkey")));
}

TEST_F(SetupViewModelTest, ATranscriptOrADayOfStatisticsIsAFirstDictation)
{
    world.stats.record(QStringLiteral("God morgen"), world.clock.now(), 2);
    EXPECT_TRUE(isDone(QStringLiteral("first")));
    world.stats.reset();
    EXPECT_FALSE(isDone(QStringLiteral("first")));
    world.privacy.microphoneAccess = MicrophoneAccess::authorized;
    world.installModel(world.settings.selectedModelID());
    world.dictate(QStringLiteral("God morgen"));
    world.stats.reset();
    EXPECT_TRUE(isDone(QStringLiteral("first"))) << "the transcript is still in memory";
}

TEST_F(SetupViewModelTest, AVocabularyOfSpacesIsNone)
{
    world.settings.vocabularyPrompt.set(QStringLiteral("  \n\t "));
    EXPECT_FALSE(isDone(QStringLiteral("vocab")));
    world.settings.vocabularyPrompt.set(QStringLiteral(" Fjordkraft\n"));
    EXPECT_TRUE(isDone(QStringLiteral("vocab")));
}

TEST_F(SetupViewModelTest, HoldingIsTriedByASingleKeyOrByAMode)
{
    world.settings.modifierHotkey.set(ModifierHotkey::rightShift);
    EXPECT_TRUE(isDone(QStringLiteral("hold"))) << "also where the key is pressed and not held";
    world.settings.modifierHotkey.set(ModifierHotkey::none);
    for (const HotkeyMode mode : {HotkeyMode::toggle, HotkeyMode::hold, HotkeyMode::hybrid}) {
        world.settings.hotkeyMode.set(mode);
        EXPECT_EQ(isDone(QStringLiteral("hold")), mode != HotkeyMode::toggle);
    }
}

TEST_F(SetupViewModelTest, TellsOfEveryChangeOfAMarkOnceAndOfNothingElse)
{
    int told = 0;
    QObject::connect(&setup(), &SetupViewModel::changed, [&told] { ++told; });
    const auto expectTold = [&told](const char* what) { EXPECT_EQ(std::exchange(told, 0), 1) << what; };
    world.privacy.microphoneAccess = MicrophoneAccess::authorized;
    world.permissions.refresh();
    expectTold("microphone");
    world.permissions.refresh();
    EXPECT_EQ(told, 0) << "a refresh that finds nothing new";
    world.privacy.accessibilityGranted = true;
    world.permissions.refresh();
    expectTold("accessibility");
    world.installModel(world.settings.selectedModelID());
    expectTold("model");
    world.settings.selectedModelID.set(QStringLiteral("nb-whisper-medium-verbatim-q5_0"));
    expectTold("another model");
    world.shortcuts.setShortcut(Shortcut{49, carbon::option}, ShortcutName::dictate());
    expectTold("combination");
    world.settings.vocabularyPrompt.set(QStringLiteral("Q3"));
    expectTold("vocabulary");
    world.settings.hotkeyMode.set(HotkeyMode::hybrid);
    expectTold("mode");
    world.settings.modifierHotkey.set(ModifierHotkey::rightOption);
    EXPECT_EQ(told, 0) << "both of its marks were set already";
    world.stats.record(QStringLiteral("hei"), world.clock.now(), 1);
    expectTold("statistics");
}

TEST_F(SetupViewModelTest, AnItemLeadsToWhereItIsDone)
{
    const QList<std::pair<QString, SettingsTab>> pages{{QStringLiteral("model"), SettingsTab::models},
                                                       {QStringLiteral("hotkey"), SettingsTab::settings},
                                                       {QStringLiteral("first"), SettingsTab::home},
                                                       {QStringLiteral("vocab"), SettingsTab::settings},
                                                       {QStringLiteral("hold"), SettingsTab::settings}};
    SettingsWindowController& window = world.ui.settingsWindow();
    for (const auto& [id, page] : pages) {
        window.selection().setTab(SettingsTab::about);
        setup().act(id);
        EXPECT_EQ(window.selection().tab(), page) << qPrintable(id);
        EXPECT_TRUE(window.window()->isVisible());
    }
    EXPECT_EQ(world.ui.onboardingWindow().window(), nullptr);
    for (const QString& id : {QStringLiteral("mic"), QStringLiteral("ax")}) {
        setup().act(id);
        ASSERT_NE(world.ui.onboardingWindow().window(), nullptr);
        EXPECT_TRUE(world.ui.onboardingWindow().window()->isVisible());
        world.ui.onboardingWindow().close();
    }
    setup().act(QStringLiteral("none of them"));
}

TEST_F(SetupViewModelTest, HidingTheChecklistIsRemembered)
{
    EXPECT_FALSE(setup().isChecklistHidden());
    setup().hideChecklist();
    EXPECT_TRUE(setup().isChecklistHidden());
    EXPECT_TRUE(AppSettings(world.defaults).hideSetupChecklist());
}

TEST_F(SetupViewModelTest, OneStepLeftIsOne)
{
    EXPECT_EQ(SetupViewModel::stepsLeft(1), QStringLiteral("1 step left."));
    EXPECT_EQ(SetupViewModel::stepsLeft(3), QStringLiteral("3 steps left."));
}

} // namespace

} // namespace tulvane::test
