#include <platform/fake/FakeStatusItem.h>
#include <support/ui/UiWorld.h>
#include <ui/menubar/MenuBarCommands.h>
#include <ui/menubar/MenuBarMenu.h>
#include <ui/menubar/MenuBarReport.h>
#include <ui/viewmodels/DictationStatus.h>
#include <ui/viewmodels/HotkeyStatus.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace tulvane::test {

namespace {

/// Remembers what it was asked to show.
class NotedWindows final : public Windows {
public:
    void showOnboarding() override { shown.append(QStringLiteral("onboarding")); }
    void showPage(SettingsTab page) override { shown.append(rawValue(page)); }
    QStringList shown;
};

class MenuBarMenuTest : public testing::Test {
protected:
    explicit MenuBarMenuTest(AppLanguage language = AppLanguage::english) : world(language)
    {
        world.privacy.microphoneAccess = MicrophoneAccess::authorized;
        world.permissions.refresh();
        menu = std::make_unique<MenuBarMenu>(item, report, commands);
        UiWorld::settle();
    }

    void setUp() { world.installModel(world.settings.selectedModelID()); }
    QString status() const { return item.entry(QStringLiteral("status")).text; }
    QString startItem() const { return item.entry(QStringLiteral("dictate")).text; }
    /// A recording that lasts until the test ends it.
    void record()
    {
        world.controller.start();
        UiWorld::settle();
    }
    QString checkedIn(const QString& submenu) const
    {
        QStringList checked;
        for (const MenuEntry& one : item.entry(submenu).entries) {
            if (one.isChecked)
                checked.append(one.name);
        }
        return checked.join(u',');
    }

    UiWorld world;
    NotedWindows windows;
    FakeStatusItem item;
    int quits = 0;
    DictationStatus dictation{world.controller, world.session};
    HotkeyStatus hotkey{world.settings, world.shortcuts, world.hotkeys};
    MenuBarReport report{dictation, hotkey, world.settings, world.stats, world.clock};
    MenuBarCommands commands{world.controller, world.session, world.settings,
                             world.boards,     windows,       [this] { ++quits; }};
    std::unique_ptr<MenuBarMenu> menu;
};

class NorwegianMenuBarMenuTest : public MenuBarMenuTest {
protected:
    NorwegianMenuBarMenuTest() : MenuBarMenuTest(AppLanguage::norwegian) {}
};

} // namespace

TEST_F(MenuBarMenuTest, HasItsLinesInOrder)
{
    EXPECT_THAT(item.names(), ElementsAre(u"status"_qs, u"-"_qs, u"dictate"_qs, u"-"_qs, u"hotkeyMode"_qs,
                                          u"language"_qs, u"-"_qs, u"open"_qs, u"statistics"_qs,
                                          u"settings"_qs, u"setup"_qs, u"-"_qs, u"quit"_qs));
    setUp();
    world.dictate(u"Hei på deg."_qs);
    record();
    EXPECT_THAT(item.names(),
                ElementsAre(u"status"_qs, u"today"_qs, u"-"_qs, u"lastTranscript"_qs, u"-"_qs, u"dictate"_qs,
                            u"cancel"_qs, u"-"_qs, u"hotkeyMode"_qs, u"language"_qs, u"-"_qs, u"open"_qs,
                            u"statistics"_qs, u"settings"_qs, u"setup"_qs, u"-"_qs, u"quit"_qs));
}

TEST_F(MenuBarMenuTest, ReadsInEnglish)
{
    setUp();
    world.dictate(u"Hei."_qs);
    record();
    QStringList texts;
    for (const MenuEntry& one : item.entries()) {
        if (one.kind != MenuEntry::Kind::separator)
            texts.append(one.text);
    }
    EXPECT_EQ(texts, QStringList({u"Listening…"_qs, u"Today: 1 words · ~0 s saved"_qs, u"Hei."_qs,
                                  u"Stop dictation"_qs, u"Cancel recording"_qs, u"Hotkey mode"_qs,
                                  u"Language"_qs, u"Open Tulvane"_qs, u"Statistics"_qs, u"Settings"_qs,
                                  u"Setup guide"_qs, u"Quit Tulvane"_qs}));
}

TEST_F(NorwegianMenuBarMenuTest, ReadsInNorwegian)
{
    setUp();
    UiWorld::settle();
    EXPECT_TRUE(status().startsWith(u"Klar · "_qs)) << qPrintable(status());
    world.dictate(u"Hei."_qs);
    record();
    QStringList texts;
    for (const MenuEntry& one : item.entries()) {
        if (one.kind != MenuEntry::Kind::separator)
            texts.append(one.text);
    }
    EXPECT_EQ(
        texts,
        QStringList({u"Lytter …"_qs, u"I dag: 1 ord · ca. 0 s spart"_qs, u"Hei."_qs, u"Stopp diktering"_qs,
                     u"Avbryt opptaket"_qs, u"Slik virker hurtigtasten"_qs, u"Språk"_qs, u"Åpne Tulvane"_qs,
                     u"Statistikk"_qs, u"Innstillinger"_qs, u"Oppsettsveiviser"_qs, u"Avslutt Tulvane"_qs}));
}

TEST_F(MenuBarMenuTest, TheStatusLineSaysWhatIsMissing)
{
    EXPECT_EQ(status(), u"Setup required"_qs);
    setUp();
    UiWorld::settle();
    EXPECT_EQ(status(), u"Ready · "_qs + world.hotkeys.hotkeyDescription());
    world.privacy.microphoneAccess = MicrophoneAccess::denied;
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_EQ(status(), u"Setup required"_qs);
}

TEST_F(MenuBarMenuTest, TheStatusLineFollowsTheSelectedModel)
{
    setUp();
    world.settings.selectedModelID.set(u"nb-whisper-medium-f16"_qs);
    ASSERT_FALSE(world.modelSource.readyFile());
    UiWorld::settle();
    EXPECT_EQ(status(), u"Setup required"_qs);
}

TEST_F(MenuBarMenuTest, TheStatusLineFollowsTheLoadingOfTheModel)
{
    world.engine.isPrompt = false;
    setUp();
    world.session.preloadModel();
    world.engine.step(); // which model it holds
    UiWorld::settle();
    ASSERT_TRUE(world.session.isModelLoading());
    UiWorld::settle();
    EXPECT_EQ(status(), u"Loading model…"_qs);
    while (world.engine.waiting() > 0) {
        world.engine.step();
        UiWorld::settle();
    }
    EXPECT_EQ(status(), u"Ready · "_qs + world.hotkeys.hotkeyDescription());
}

TEST_F(MenuBarMenuTest, TheStatusLineFollowsTheHotkey)
{
    setUp();
    world.settings.modifierHotkey.set(ModifierHotkey::rightControl);
    UiWorld::settle();
    EXPECT_EQ(status(), u"Ready · "_qs + world.hotkeys.hotkeyDescription());
    const QString before = status();
    world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    UiWorld::settle();
    EXPECT_EQ(status(), u"Ready · "_qs + world.hotkeys.hotkeyDescription());
    EXPECT_NE(status(), before);
}

TEST_F(MenuBarMenuTest, IconAndFirstLineFollowThePhase)
{
    setUp();
    UiWorld::settle();
    EXPECT_EQ(item.symbol(), u"mic"_qs);
    world.engine.isPrompt = false;
    record();
    EXPECT_EQ(item.symbol(), u"mic.fill"_qs);
    EXPECT_EQ(status(), u"Listening…"_qs);
    EXPECT_EQ(item.description(), u"Tulvane – Listening…"_qs);
    static_cast<void>(world.input.push(std::vector<float>(48000, 0.5F)));
    world.controller.stop();
    UiWorld::settle();
    EXPECT_EQ(item.symbol(), u"waveform"_qs);
    EXPECT_EQ(status(), u"Transcribing…"_qs);
    while (world.engine.waiting() > 0 && world.controller.phase().kind == Phase::Kind::transcribing) {
        world.engine.step();
        UiWorld::settle();
    }
    ASSERT_EQ(world.controller.phase().kind, Phase::Kind::inserting);
    EXPECT_EQ(item.symbol(), u"waveform"_qs);
    EXPECT_EQ(status(), u"Inserting…"_qs);
}

TEST_F(MenuBarMenuTest, ANoticeIsShownAsItIsAndADictationCanStart)
{
    setUp();
    world.controller.showNotice(u"Too short"_qs);
    UiWorld::settle();
    EXPECT_EQ(status(), u"Too short"_qs);
    EXPECT_EQ(item.symbol(), u"mic"_qs);
    EXPECT_EQ(startItem(), u"Start dictation"_qs);
    item.click(u"dictate"_qs);
    EXPECT_EQ(world.controller.phase().kind, Phase::Kind::recording);
}

TEST_F(MenuBarMenuTest, AnErrorIsNamedAsOne)
{
    setUp();
    world.controller.showError(u"No microphone is available."_qs);
    UiWorld::settle();
    EXPECT_EQ(status(), u"Error: No microphone is available."_qs);
    EXPECT_EQ(item.symbol(), u"mic.slash"_qs);
    EXPECT_EQ(startItem(), u"Start dictation"_qs);
}

TEST_F(MenuBarMenuTest, AnErrorsOwnPercentSignsStand)
{
    world.controller.showError(u"100 %1 full"_qs);
    UiWorld::settle();
    EXPECT_EQ(status(), u"Error: 100 %1 full"_qs);
}

TEST_F(MenuBarMenuTest, TodayIsCountedFromTheFirstWordOn)
{
    world.stats.record(u"i går"_qs, world.clock.now().addDays(-1), 1);
    EXPECT_EQ(report.todayLine(), std::nullopt);
    world.stats.record(u"."_qs, world.clock.now(), 1); // counted, and no word
    ASSERT_FALSE(world.stats.days().isEmpty());
    EXPECT_EQ(report.todayLine(), std::nullopt);
    world.settings.typingWordsPerMinute.set(40);
    world.stats.record(u"ord "_qs.repeated(1240), world.clock.now(), 360);
    UiWorld::settle();
    // 1240 words take 31 minutes at 40 a minute; 361 seconds were spoken.
    EXPECT_EQ(item.entry(u"today"_qs).text, u"Today: 1,240 words · ~24 min saved"_qs);
    world.settings.typingWordsPerMinute.set(80);
    UiWorld::settle();
    EXPECT_EQ(item.entry(u"today"_qs).text, u"Today: 1,240 words · ~9 min saved"_qs);
}

TEST_F(MenuBarMenuTest, SpeakingSlowerThanTypingSavesNothingRatherThanLess)
{
    world.stats.record(u"to ord"_qs, world.clock.now(), 600);
    EXPECT_EQ(report.todayLine(), u"Today: 2 words · ~0 s saved"_qs);
}

TEST_F(MenuBarMenuTest, AMenuThatIsOpenedAfterMidnightKnowsTheNewDay)
{
    world.stats.record(u"to ord"_qs, world.clock.now(), 600);
    UiWorld::settle();
    EXPECT_TRUE(item.has(u"today"_qs));
    world.clock.setNow(world.clock.now().addDays(1));
    item.open();
    EXPECT_FALSE(item.has(u"today"_qs));
}

TEST_F(MenuBarMenuTest, AMenuThatIsOpenedKnowsWhatAnotherProcessCounted)
{
    StatsStore(world.stats.fileURL(), world.stats.calendar()).record(u"to ord"_qs, world.clock.now(), 1);
    EXPECT_FALSE(item.has(u"today"_qs));
    item.open();
    EXPECT_TRUE(item.has(u"today"_qs));
}

TEST_F(MenuBarMenuTest, WithoutATranscriptThereIsNoLineForIt)
{
    setUp();
    UiWorld::settle();
    EXPECT_FALSE(item.has(u"lastTranscript"_qs));
    world.dictate(u"Hei på deg."_qs);
    EXPECT_EQ(item.entry(u"lastTranscript"_qs).text, u"Hei på deg."_qs);
}

TEST_F(MenuBarMenuTest, ATranscriptIsCutAfterSixtyCharactersAsAUserCountsThem)
{
    const QString sixty = QString(60, u'å');
    EXPECT_EQ(MenuBarCommands::shortened(sixty), sixty);
    EXPECT_EQ(MenuBarCommands::shortened(sixty + u'x'), sixty + u'…');
    const QString family = u"👩‍👩‍👧"_qs; // one character of eight code units
    EXPECT_EQ(MenuBarCommands::shortened(family.repeated(60)), family.repeated(60));
    EXPECT_EQ(MenuBarCommands::shortened(family.repeated(61)), family.repeated(60) + u'…');
    const QString decomposed = u"a\u030A"_qs;
    EXPECT_EQ(MenuBarCommands::shortened(decomposed.repeated(61)), decomposed.repeated(60) + u'…');
    EXPECT_EQ(MenuBarCommands::shortened(sixty + u' '), sixty);
    EXPECT_EQ(MenuBarCommands::shortened({}), QString());
}

TEST_F(MenuBarMenuTest, ATranscriptStandsOnOneLine)
{
    EXPECT_EQ(MenuBarCommands::shortened(u"a\nb\tc\u2028d"_qs), u"a b c d"_qs);
}

TEST_F(MenuBarMenuTest, ClickingTheTranscriptCopiesAllOfIt)
{
    setUp();
    const QString text = u"Dette er en setning som er så lang at menyen bare viser begynnelsen av den."_qs;
    world.dictate(text);
    world.boards.generalBoard.otherProgramWrites(u"something else"_qs);
    EXPECT_EQ(item.entry(u"lastTranscript"_qs).text.size(), 61);
    item.click(u"lastTranscript"_qs);
    EXPECT_EQ(world.boards.generalBoard.text(), world.session.lastTranscript());
    EXPECT_TRUE(world.boards.generalBoard.text().startsWith(text));
}

TEST_F(MenuBarMenuTest, StartsStopsAndCancels)
{
    setUp();
    UiWorld::settle();
    EXPECT_FALSE(item.has(u"cancel"_qs));
    item.click(u"dictate"_qs);
    UiWorld::settle();
    EXPECT_EQ(world.controller.phase().kind, Phase::Kind::recording);
    EXPECT_EQ(startItem(), u"Stop dictation"_qs);
    item.click(u"cancel"_qs);
    EXPECT_EQ(world.controller.phase(), Phase()); // without a notice
    UiWorld::settle();
    EXPECT_FALSE(item.has(u"cancel"_qs));
    item.click(u"dictate"_qs);
    UiWorld::settle();
    item.click(u"dictate"_qs);
    EXPECT_NE(world.controller.phase().kind, Phase::Kind::recording);
}

TEST_F(MenuBarMenuTest, TheHotkeyModeIsSwitched)
{
    const MenuEntry modes = item.entry(u"hotkeyMode"_qs);
    ASSERT_EQ(modes.entries.size(), 3);
    EXPECT_EQ(modes.entries[0].text, u"Toggle (press to start, press to stop)"_qs);
    EXPECT_EQ(modes.entries[1].text, u"Hold to talk"_qs);
    EXPECT_EQ(modes.entries[2].text, u"Hold to talk, tap to toggle"_qs);
    EXPECT_EQ(checkedIn(u"hotkeyMode"_qs), rawValue(world.settings.hotkeyMode()));
    for (const char* mode : {"hold", "toggle", "hybrid"}) {
        item.click(u"hotkeyMode/"_qs + QString::fromLatin1(mode));
        UiWorld::settle();
        EXPECT_EQ(rawValue(world.settings.hotkeyMode()), QString::fromLatin1(mode));
        EXPECT_EQ(checkedIn(u"hotkeyMode"_qs), QString::fromLatin1(mode));
    }
}

TEST_F(MenuBarMenuTest, TheSpokenLanguageIsSwitched)
{
    const MenuEntry languages = item.entry(u"language"_qs);
    ASSERT_EQ(languages.entries.size(), 4);
    EXPECT_EQ(languages.entries[0].text, u"Norsk bokmål"_qs);
    EXPECT_EQ(languages.entries[1].text, u"Norsk nynorsk"_qs);
    EXPECT_EQ(languages.entries[2].text, u"English"_qs);
    EXPECT_EQ(languages.entries[3].text, u"Auto-detect"_qs);
    for (const char* language : {"en", "nn", "auto", "no"}) {
        item.click(u"language/"_qs + QString::fromLatin1(language));
        UiWorld::settle();
        EXPECT_EQ(rawValue(world.settings.language()), QString::fromLatin1(language));
        EXPECT_EQ(checkedIn(u"language"_qs), QString::fromLatin1(language));
    }
}

TEST_F(MenuBarMenuTest, LeadsIntoTheWindowsAndOutOfTheProgram)
{
    for (const char* name : {"open", "statistics", "settings", "setup"})
        item.click(QString::fromLatin1(name));
    EXPECT_EQ(windows.shown, QStringList({u"home"_qs, u"statistics"_qs, u"settings"_qs, u"onboarding"_qs}));
    EXPECT_EQ(quits, 0);
    item.click(u"quit"_qs);
    EXPECT_EQ(quits, 1);
}

TEST_F(MenuBarMenuTest, TellsOnlyOfWhatIsNewAndOfWhatChangesTogetherOnce)
{
    setUp();
    UiWorld::settle();
    const int before = item.menus();
    world.settings.playSounds.set(false);
    world.settings.language.set(world.settings.language());
    world.permissions.refresh();
    UiWorld::settle();
    EXPECT_EQ(item.menus(), before);
    world.settings.language.set(TranscriptionLanguage::english);
    world.settings.hotkeyMode.set(HotkeyMode::hold);
    UiWorld::settle();
    EXPECT_EQ(item.menus(), before + 1);
    EXPECT_EQ(item.symbols(), QStringList(u"mic"_qs));
}

} // namespace tulvane::test
