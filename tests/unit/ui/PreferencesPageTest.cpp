#include <support/LogCapture.h>
#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/windows/SettingsWindowController.h>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class PreferencesPageTest : public ::testing::Test {
protected:
    void SetUp() override { show(); }
    void show()
    {
        world.ui.showPage(SettingsTab::settings);
        probe.emplace(*world.ui.settingsWindow().window());
    }
    /// Opens the picker and chooses the option by the keyboard, counted from the first.
    void choose(const char* picker, int option)
    {
        probe->click(QStringLiteral("settings.") + QString::fromLatin1(picker));
        probe->press(Qt::Key_Home);
        for (int i = 0; i < option; ++i)
            probe->press(Qt::Key_Down);
        probe->press(Qt::Key_Return);
    }
    void click(const char* name) { probe->click(QStringLiteral("settings.") + QString::fromLatin1(name)); }
    [[nodiscard]] QVariant stored(const char* key) const
    {
        return world.defaults.value(QString::fromLatin1(key));
    }

    UiWorld world;
    std::optional<WindowProbe> probe;
};

TEST_F(PreferencesPageTest, EverySwitchStoresItsSetting)
{
    const QList<const char*> switches{"playSounds",     "showHUD",    "restoreClipboard",
                                      "autoCapitalize", "showInDock", "appendTrailingSpace"};
    for (const char* name : switches) {
        click(name);
        EXPECT_EQ(stored(name), QVariant(false)) << name;
        click(name);
        EXPECT_EQ(stored(name), QVariant(true)) << name;
    }
}

TEST_F(PreferencesPageTest, ASwitchFollowsASettingThatIsChangedElsewhere)
{
    click("playSounds");
    world.settings.playSounds.set(true);
    UiWorld::settle();
    EXPECT_TRUE(probe->item(QStringLiteral("settings.playSounds")).property("checked").toBool());
    world.settings.playSounds.set(false);
    UiWorld::settle();
    EXPECT_FALSE(probe->item(QStringLiteral("settings.playSounds")).property("checked").toBool());
}

TEST_F(PreferencesPageTest, ASwitchThatAScreenReaderSetsIsStoredToo)
{
    auto& control = probe->item(QStringLiteral("settings.playSounds"));
    control.setProperty("checked", false);
    EXPECT_FALSE(world.settings.playSounds());
    control.setProperty("checked", true);
    EXPECT_TRUE(world.settings.playSounds());
    world.settings.playSounds.set(false);
    EXPECT_FALSE(control.property("checked").toBool());
}

TEST_F(PreferencesPageTest, EveryPickerStoresItsSetting)
{
    choose("language", 2);
    EXPECT_EQ(stored("language"), QVariant(QStringLiteral("en")));
    choose("language", 0);
    EXPECT_EQ(stored("language"), QVariant(QStringLiteral("no")));
    choose("insertionMethod", 1);
    EXPECT_EQ(stored("insertionMethod"), QVariant(QStringLiteral("accessibilityThenPaste")));
    choose("appearance", 2);
    EXPECT_EQ(stored("appearance"), QVariant(QStringLiteral("dark")));
}

TEST_F(PreferencesPageTest, APickerFollowsASettingThatIsChangedElsewhere)
{
    choose("language", 2);
    world.settings.language.set(TranscriptionLanguage::norwegianNynorsk);
    UiWorld::settle();
    EXPECT_EQ(probe->item(QStringLiteral("settings.language")).property("displayText").toString(),
              QStringLiteral("Norsk nynorsk"));
}

TEST_F(PreferencesPageTest, TheLongestRecordingGoesInTensBetweenItsBounds)
{
    const QString stepper = QStringLiteral("settings.maxRecordingSeconds");
    world.settings.maxRecordingSeconds.set(20);
    UiWorld::settle();
    probe->item(stepper).forceActiveFocus(Qt::TabFocusReason);
    probe->press(Qt::Key_Down);
    EXPECT_EQ(world.settings.maxRecordingSeconds(), 10);
    probe->press(Qt::Key_Down);
    EXPECT_EQ(world.settings.maxRecordingSeconds(), 10);
    EXPECT_TRUE(probe->shows(QStringLiteral("10 s")));
    world.settings.maxRecordingSeconds.set(1790);
    UiWorld::settle();
    probe->press(Qt::Key_Up);
    probe->press(Qt::Key_Up);
    EXPECT_EQ(world.settings.maxRecordingSeconds(), 1800);
}

TEST_F(PreferencesPageTest, AStepperHasItsValueAndRangeForAScreenReader)
{
    QAccessible::setActive(true);
    world.settings.maxRecordingSeconds.set(120);
    UiWorld::settle();
    QAccessibleInterface* const stepper =
        QAccessible::queryAccessibleInterface(&probe->item(QStringLiteral("settings.maxRecordingSeconds")));
    EXPECT_EQ(stepper->role(), QAccessible::SpinBox);
    ASSERT_NE(stepper->valueInterface(), nullptr);
    EXPECT_EQ(stepper->valueInterface()->currentValue().toInt(), 120);
    EXPECT_EQ(stepper->valueInterface()->minimumValue().toInt(), 10);
    EXPECT_EQ(stepper->valueInterface()->maximumValue().toInt(), 1800);
    EXPECT_EQ(stepper->valueInterface()->minimumStepSize().toInt(), 10);
    QAccessible::setActive(false);
}

TEST_F(PreferencesPageTest, CopyingOnlyLeavesNoClipboardToRestore)
{
    choose("insertionMethod", 2);
    const QString restore = QStringLiteral("settings.restoreClipboard");
    EXPECT_FALSE(probe->item(restore).isEnabled());
    probe->click(restore);
    EXPECT_TRUE(world.settings.restoreClipboard());
    choose("insertionMethod", 0);
    EXPECT_TRUE(probe->item(restore).isEnabled());
}

TEST_F(PreferencesPageTest, TheVocabularyIsStoredOnceTypingRestsOrTheFieldIsLeft)
{
    auto& field = probe->item(QStringLiteral("settings.vocabularyPrompt"));
    EXPECT_TRUE(probe->shows(QStringLiteral("Nordlys Energi, Ingrid Haugland, Q3")));
    probe->click(field);
    probe->type(QStringLiteral("Åse"));
    EXPECT_EQ(world.settings.vocabularyPrompt(), QString());
    probe->press(Qt::Key_Tab);
    EXPECT_EQ(world.settings.vocabularyPrompt(), QStringLiteral("Åse"));
    EXPECT_FALSE(probe->shows(QStringLiteral("Nordlys Energi, Ingrid Haugland, Q3")));
}

TEST_F(PreferencesPageTest, AVocabularyThatIsBeingTypedIsNotLostWithThePage)
{
    probe->click(QStringLiteral("settings.vocabularyPrompt"));
    probe->type(QStringLiteral("Q3"));
    world.ui.showPage(SettingsTab::about);
    UiWorld::settle();
    EXPECT_EQ(world.settings.vocabularyPrompt(), QStringLiteral("Q3"));
}

TEST_F(PreferencesPageTest, ThePermissionsSayHowTheyStandAndHowToMendThem)
{
    EXPECT_EQ(probe->texts().count(QStringLiteral("Granted")), 2);
    EXPECT_FALSE(probe->has(QStringLiteral("settings.accessibility.reset")));
    world.privacy.accessibilityGranted = false;
    world.privacy.microphoneAccess = MicrophoneAccess::denied;
    world.privacy.obstacles[Permission::microphone] = {QStringLiteral("The sound server refuses."),
                                                       QStringLiteral("Ask it again.")};
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_EQ(probe->texts().count(QStringLiteral("Not granted")), 2);
    EXPECT_TRUE(probe->shows(QStringLiteral("The sound server refuses. Ask it again.")));
    click("microphone.settings");
    click("accessibility.settings");
    ASSERT_EQ(world.workspace.opened.size(), 2);
    EXPECT_EQ(world.workspace.opened.at(0), QUrl(PermissionsService::microphonePane));
    EXPECT_EQ(world.workspace.opened.at(1), QUrl(PermissionsService::accessibilityPane));
    const auto requests = world.privacy.calls.count(QStringLiteral("requestAccessibility"));
    click("accessibility.reset");
    EXPECT_EQ(world.privacy.calls.count(QStringLiteral("requestAccessibility")), requests + 1);
    EXPECT_FALSE(world.processes.commands.isEmpty());
}

TEST_F(PreferencesPageTest, WhereTheDesktopAsksItsDialogIsOneClickAway)
{
    world.privacy.accessibilityGranted = false;
    world.privacy.asked = Permission::accessibility;
    const QString asks = QStringLiteral("This desktop asks you in a dialog of its own whether keys may be "
                                        "pressed, and asks again at each start.");
    world.privacy.obstacles[Permission::accessibility] = {asks, QStringLiteral("Choose Share.")};
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_TRUE(probe->shows(asks + QStringLiteral(" Choose Share.")));
    EXPECT_TRUE(probe->shows(QStringLiteral("Let Tulvane press keys…")));
    EXPECT_FALSE(probe->has(QStringLiteral("settings.accessibility.reset")));
    click("accessibility.settings");
    EXPECT_EQ(world.privacy.calls.count(QStringLiteral("requestAccessibility")), 1);
    EXPECT_TRUE(world.workspace.opened.isEmpty());

    const LogCapture log;
    world.privacy.accessibilityGranted = true;
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_FALSE(log.contains(QStringLiteral("Binding loop"))) << "as the long text goes";
}

TEST_F(PreferencesPageTest, AnotherInterfaceLanguageStartsTheProgramAnew)
{
    choose("appLanguage", 0);
    EXPECT_EQ(world.relaunches, 0) << "English is spoken already";
    choose("appLanguage", 1);
    EXPECT_EQ(stored("appLanguage"), QVariant(QStringLiteral("nb")));
    EXPECT_EQ(world.relaunches, 1);
}

TEST_F(PreferencesPageTest, TheTaskBarEntryIsExplainedEitherWay)
{
    EXPECT_TRUE(probe->shows(QStringLiteral("Behaves like a normal app with an entry in the task bar.")));
    click("showInDock");
    EXPECT_TRUE(probe->shows(QStringLiteral(
        "System tray only. Use the microphone icon in the tray to reach this window and quit.")));
}

TEST_F(PreferencesPageTest, NoIconIsPromisedWhereThereIsNoTray)
{
    click("showInDock");
    const QString promise = QStringLiteral(
        "System tray only. Use the microphone icon in the tray to reach this window and quit.");
    const QString truth = QStringLiteral(
        "This desktop shows no icon for Tulvane. Start it again to reach this window; you can quit below.");
    EXPECT_TRUE(probe->shows(promise));
    world.statusItem.setBar(false);
    UiWorld::settle();
    EXPECT_TRUE(probe->shows(truth));
    EXPECT_FALSE(probe->shows(promise));
    world.statusItem.setBar(true);
    UiWorld::settle();
    EXPECT_TRUE(probe->shows(promise));
}

TEST_F(PreferencesPageTest, QuitEndsTheProgram)
{
    EXPECT_EQ(world.quits, 0);
    click("quit");
    EXPECT_EQ(world.quits, 1);
}

TEST_F(PreferencesPageTest, LaunchAtLoginAsksTheDesktopAndSaysWhyItRefuses)
{
    click("launchAtLogin");
    EXPECT_TRUE(world.loginItem.isEnabled());
    world.loginItem.refuse(QStringLiteral("The folder cannot be written."));
    click("launchAtLogin");
    EXPECT_TRUE(world.loginItem.isEnabled());
    EXPECT_TRUE(probe->shows(QStringLiteral("The folder cannot be written.")));
    EXPECT_TRUE(probe->item(QStringLiteral("settings.launchAtLogin")).property("checked").toBool());
}

TEST_F(PreferencesPageTest, EveryControlIsReachedByTabAndNamed)
{
    const QStringList order = probe->tabOrder();
    EXPECT_FALSE(order.contains(QString())) << qPrintable(order.join(u'|'));
    for (const char* name :
         {"Language", "Stop automatically", "Sounds", "On-screen indicator", "Insert text by",
          "Restore clipboard", "Capitalise the first letter", "Add a space after the text", "Vocabulary",
          "Setup guide", "Appearance", "App language", "Show in task bar", "Launch at login"})
        EXPECT_TRUE(order.contains(QString::fromLatin1(name)))
            << name << " in " << qPrintable(order.join(u'|'));
}

TEST_F(PreferencesPageTest, NothingIsCutOffInEitherLanguage)
{
    for (const AppLanguage language : allCases<AppLanguage>()) {
        UiWorld full(language);
        full.fill();
        EXPECT_EQ(flawsOf(full, SettingsTab::settings), QStringList());
        EXPECT_EQ(flawsOf(full, SettingsTab::about), QStringList());
    }
}

} // namespace

} // namespace tulvane::test
