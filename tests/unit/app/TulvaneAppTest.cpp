#include <app/TulvaneApp.h>
#include <platform/fake/FakeAudioInput.h>
#include <platform/fake/FakeBackgroundTransfers.h>
#include <platform/fake/FakeFocusedElement.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeKeyPosting.h>
#include <platform/fake/FakeKeyboardGrab.h>
#include <platform/fake/FakeLoginItem.h>
#include <platform/fake/FakeModifierEvents.h>
#include <platform/fake/FakePasteboard.h>
#include <platform/fake/FakePresentation.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/fake/FakeProcesses.h>
#include <platform/fake/FakeScreenLock.h>
#include <platform/fake/FakeSounds.h>
#include <platform/fake/FakeStatusItem.h>
#include <platform/fake/FakeSystemMemory.h>
#include <platform/fake/FakeUserDefaults.h>
#include <platform/fake/FakeWorkspace.h>
#include <settings/InterfaceLanguage.h>
#include <speech/device/ComputingStatus.h>
#include <stats/StatsFile.h>
#include <support/Await.h>
#include <support/FakeRecognizer.h>
#include <support/Folders.h>
#include <support/ScratchFolder.h>

#include <QJsonArray>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;

namespace tulvane::test {

namespace {

class NoIndicator final : public Indicator {
public:
    void setPhase(const Phase& /*phase*/) override {}
    void setLevel(float /*level*/) override {}
    void show() override {}
    void hide(bool /*animated*/) override {}
};

class NotedWindows final : public Windows {
public:
    void showOnboarding() override { shown.append(u"onboarding"_qs); }
    void showPage(SettingsTab page) override { shown.append(rawValue(page)); }
    QStringList shown;
};

/// The whole program without a desktop.
class TulvaneAppTest : public testing::Test {
protected:
    TulvaneApp& app()
    {
        if (!m_app)
            m_app = std::make_unique<TulvaneApp>(m_desktop, m_recognizer, options(),
                                                 Surfaces{.indicator = m_indicator,
                                                          .windows = windows,
                                                          .bringToFront = [this] { return hasWindows; },
                                                          .quit = [this] { ++quits; }});
        return *m_app;
    }
    /// Nothing is missing: permission, model, hotkey, and the user has been led through it.
    void setUp()
    {
        privacy.microphoneAccess = MicrophoneAccess::authorized;
        ASSERT_TRUE(defaults.set(u"hasCompletedOnboarding"_qs, true));
        const WhisperModel model = WhisperModel::fallback();
        put(data.file(u"Tulvane/Models/"_qs + model.id + u".bin"_qs));
        QFile file(data.file(u"Tulvane/Models/"_qs + model.id + u".bin"_qs));
        ASSERT_TRUE(file.resize(model.approximateSizeBytes));
    }

    /// A dictation by the command, to where its text is brought into the program in front.
    void dictate()
    {
        privacy.accessibilityGranted = true;
        app().launch();
        app().controller().start();
        ASSERT_TRUE(m_input.push(std::vector<float>(48000, 0.5F)));
        app().controller().stop();
        ASSERT_TRUE(waitUntil([this] { return app().controller().phase().kind == Phase::Kind::inserting; }));
    }

    std::shared_ptr<FakeUserDefaults::Store> store = std::make_shared<FakeUserDefaults::Store>();
    FakeUserDefaults defaults{store};
    FakePrivacyPermissions privacy;
    FakeKeyPosting keys;
    FakePasteboards boards;
    FakePresentation presentation;
    FakeScreenLock screen;
    NotedWindows windows;
    ScratchFolder data;
    ComputingStatus computing;
    bool hasWindows = false;
    bool runsCommandForHotkey = false;
    int quits = 0;

private:
    /// The fakes are the fixture's own.
    template <class Port>
    static std::shared_ptr<Port> unowned(Port& port)
    {
        return {std::shared_ptr<void>(), &port};
    }
    Desktop ports()
    {
        Desktop desktop;
        desktop.defaults = unowned(defaults);
        desktop.microphone = unowned(m_input);
        desktop.sounds = unowned(m_sounds);
        desktop.hotkeys = unowned(m_hotkeys);
        desktop.modifierEvents = unowned(m_modifiers);
        desktop.pasteboards = unowned(boards);
        desktop.keys = unowned(keys);
        desktop.elements = unowned(m_elements);
        desktop.permissions = unowned(privacy);
        desktop.processes = unowned(m_processes);
        desktop.workspace = unowned(m_workspace);
        desktop.transfers = unowned(m_transfers);
        desktop.memory = unowned(m_memory);
        desktop.presentation = unowned(presentation);
        desktop.keyboard = unowned(m_keyboard);
        desktop.loginItem = unowned(m_loginItem);
        desktop.screenLock = unowned(screen);
        desktop.statusItem = unowned(m_statusItem);
        desktop.runsCommandForHotkey = [this] { return runsCommandForHotkey; };
        return desktop;
    }
    TulvaneApp::Options options()
    {
        return {.version = u"0.1.0"_qs,
                .folders = {data.file(u"Tulvane/Models"_qs), data.file(u"tmp"_qs)},
                .hub = QUrl(u"http://hub.invalid/"_qs),
                .statisticsFile = data.file(u"Tulvane/statistics.json"_qs),
                .dataFolder = data.path(),
                .computing = &computing,
                .figuresFile = data.file(u"cache/model-figures.json"_qs)};
    }

    FakeAudioInput m_input;
    FakeSounds m_sounds;
    FakeGlobalHotkeys m_hotkeys;
    FakeModifierEvents m_modifiers;
    FakeKeyboardGrab m_keyboard;
    FakeFocusedElements m_elements;
    FakeProcesses m_processes;
    FakeWorkspace m_workspace;
    FakeBackgroundTransfers m_transfers;
    FakeRecognizer m_recognizer;
    FakeLoginItem m_loginItem;
    FakeSystemMemory m_memory;
    FakeStatusItem m_statusItem;
    NoIndicator m_indicator;
    Desktop m_desktop = ports();
    std::unique_ptr<TulvaneApp> m_app;
};

} // namespace

TEST_F(TulvaneAppTest, TheDeviceOfTheSettingsReachesTheRecogniserAtOnceAndAtEachChange)
{
    ASSERT_TRUE(defaults.set(u"computingDevice"_qs, u"Radeon"_qs));
    setUp();
    TulvaneApp& program = app();
    EXPECT_EQ(computing.wanted()->name(), u"Radeon"_qs);
    const int request = computing.wanted()->request();
    EXPECT_EQ(
        program.answer(RemoteRequest::settings, u"[\"set\", \"computingDevice\", \"cpu\"]"_qs)[u"status"_qs]
            .toInt(-1),
        0);
    EXPECT_EQ(computing.wanted()->name(), u"cpu"_qs);
    EXPECT_GT(computing.wanted()->request(), request);
}

TEST_F(TulvaneAppTest, WhatTheEarlierProductCountedIsThereFromTheFirstStartOn)
{
    const QDateTime day(QDate(2026, 11, 19), QTime(0, 0));
    put(data.file(u"Arven Scribe/statistics.json"_qs), *encodeStatistics({DailyStat{day, 3, 40, 200, 20}}));
    const StatsStore& stats = app().uiContext({}).stats;
    ASSERT_EQ(stats.days().size(), 1);
    EXPECT_EQ(stats.days()[0].words, 40);
    // The whole folder moved: nothing had been put into the new one's place before.
    EXPECT_FALSE(QFile::exists(data.file(u"Arven Scribe"_qs)));
}

TEST_F(TulvaneAppTest, WhatTheEarlierProductWasSetToCountsFromTheNextStartOn)
{
    store->insert(u"com.dunio.Arvenscribe"_qs, {{u"appLanguage"_qs, u"en"_qs}, {u"playSounds"_qs, false}});
    const UiContext context = app().uiContext({});
    EXPECT_TRUE(context.settings.playSounds());
    EXPECT_EQ(context.settings.appLanguage(), AppLanguage::norwegian);
    EXPECT_EQ(defaults.value(u"playSounds"_qs), false);
    EXPECT_EQ(defaults.value(u"appLanguage"_qs), u"en"_qs);
}

TEST_F(TulvaneAppTest, TheDockEntryFollowsTheSetting)
{
    ASSERT_TRUE(defaults.set(u"showInDock"_qs, true));
    const UiContext context = app().uiContext({});
    EXPECT_TRUE(presentation.policies().isEmpty());
    context.settings.showInDock.set(false);
    context.settings.showInDock.set(false);
    EXPECT_THAT(presentation.policies(), ElementsAre(ActivationPolicy::accessory));
}

TEST_F(TulvaneAppTest, AnotherStartOpensTheMainWindowWhereEverythingIsSetUp)
{
    setUp();
    static_cast<void>(app().answer(RemoteRequest::activate, {}));
    EXPECT_EQ(windows.shown, QStringList(u"home"_qs));
}

TEST_F(TulvaneAppTest, AnotherStartLeadsThroughTheSetupWhereSomethingIsMissing)
{
    static_cast<void>(app().answer(RemoteRequest::activate, {}));
    EXPECT_EQ(windows.shown, QStringList(u"onboarding"_qs));
}

TEST_F(TulvaneAppTest, AnotherStartWithAPageOpensThatPage)
{
    hasWindows = true;
    static_cast<void>(app().answer(RemoteRequest::activate, u"statistics"_qs));
    EXPECT_EQ(windows.shown, QStringList(u"statistics"_qs));
    static_cast<void>(app().answer(RemoteRequest::activate, {}));
    EXPECT_EQ(windows.shown.size(), 1); // what is there is brought to the front
}

TEST_F(TulvaneAppTest, EachOfTheFourThingsIsNeeded)
{
    setUp();
    app().launch();
    EXPECT_TRUE(app().isSetUp());
    EXPECT_TRUE(windows.shown.isEmpty());
    const UiContext context = app().uiContext({});
    context.settings.hasCompletedOnboarding.set(false);
    EXPECT_FALSE(app().isSetUp());
    context.settings.hasCompletedOnboarding.set(true);
    context.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    context.settings.modifierHotkey.set(ModifierHotkey::none);
    EXPECT_FALSE(app().isSetUp());
    context.settings.modifierHotkey.set(ModifierHotkey::rightControl);
    EXPECT_TRUE(app().isSetUp());
    privacy.microphoneAccess = MicrophoneAccess::denied;
    context.permissions.refresh();
    EXPECT_FALSE(app().isSetUp());
    privacy.microphoneAccess = MicrophoneAccess::authorized;
    context.permissions.refresh();
    EXPECT_TRUE(app().isSetUp());
    ASSERT_TRUE(context.models.deleteModel(WhisperModel::fallback()));
    EXPECT_FALSE(app().isSetUp());
}

TEST_F(TulvaneAppTest, AChangeFromTheCommandLineIsFollowedInTheInterfacesLanguage)
{
    installInterfaceLanguage(AppLanguage::norwegian);
    const UiContext context = app().uiContext({});
    QString shown;
    QObject::connect(&context.settings.hotkeyMode, &AnySetting::changed, &context.settings,
                     [&] { shown = title(context.settings.hotkeyMode()); });
    const QJsonObject answer =
        app().answer(RemoteRequest::settings, u"[\"set\", \"hotkeyMode\", \"hold\"]"_qs);
    EXPECT_EQ(answer[u"status"_qs].toInt(-1), 0);
    EXPECT_EQ(shown, u"Hold inne for å snakke");
    defaults.failWrites(DefaultsError::notWritten(u"/there"_qs, u"full"_qs));
    const QJsonObject refused =
        app().answer(RemoteRequest::settings, u"[\"set\", \"hotkeyMode\", \"toggle\"]"_qs);
    EXPECT_EQ(refused[u"err"_qs].toString(), u"tulvane: The setting could not be saved to /there: full\n");
    installInterfaceLanguage(AppLanguage::english);
}

TEST_F(TulvaneAppTest, ARecordingIsAbandonedAtTheEnd)
{
    setUp();
    app().launch();
    app().controller().start();
    ASSERT_EQ(app().controller().phase().kind, Phase::Kind::recording);
    app().prepareToQuit();
    EXPECT_EQ(app().controller().phase(), Phase());
}

TEST_F(TulvaneAppTest, ADeliveryThatIsUnderWayIsFinishedAtTheEnd)
{
    setUp();
    boards.generalBoard.otherProgramWrites(u"theirs"_qs);
    dictate();
    app().prepareToQuit();
    EXPECT_NE(app().controller().phase().kind, Phase::Kind::inserting);
    EXPECT_EQ(keys.pastes(), 1);
    EXPECT_EQ(boards.generalBoard.text(), u"theirs");
}

TEST_F(TulvaneAppTest, ARepeatedCommandOfTheHotkeysIsOnePress)
{
    setUp();
    runsCommandForHotkey = true;
    app().launch();
    for (int call = 0; call < 3; ++call)
        (void)app().answer(RemoteRequest::toggle, {});
    EXPECT_EQ(app().controller().phase().kind, Phase::Kind::recording);
}

TEST_F(TulvaneAppTest, ACommandOfTheUsersTogglesEachTime)
{
    setUp();
    app().launch();
    (void)app().answer(RemoteRequest::toggle, {});
    EXPECT_EQ(app().controller().phase().kind, Phase::Kind::recording);
    (void)app().answer(RemoteRequest::toggle, {});
    EXPECT_NE(app().controller().phase().kind, Phase::Kind::recording);
}

TEST_F(TulvaneAppTest, WhileTheScreenIsLockedNothingStartsAndTheCallerLearnsWhy)
{
    setUp();
    screen.setLocked(true);
    app().launch();
    EXPECT_TRUE(app().answer(RemoteRequest::start, {})[u"locked"_qs].toBool());
    EXPECT_EQ(app().controller().phase(), Phase());
    const QJsonArray lines = app().answer(RemoteRequest::doctor, {})[u"diagnostics"_qs].toArray();
    EXPECT_EQ(lines.last()[u"subject"_qs], u"screen"_qs);
    EXPECT_FALSE(lines.last()[u"works"_qs].toBool());
    screen.setLocked(false);
    EXPECT_FALSE(app().answer(RemoteRequest::start, {})[u"locked"_qs].toBool(true));
    EXPECT_EQ(app().controller().phase().kind, Phase::Kind::recording);
}

TEST_F(TulvaneAppTest, IsAskedToQuitFromOutsideAndFromAWindow)
{
    EXPECT_FALSE(app().answer(RemoteRequest::quit, {}).isEmpty());
    EXPECT_EQ(quits, 1);
    app().uiContext({}).quit();
    EXPECT_EQ(quits, 2);
}

TEST_F(TulvaneAppTest, ALockEndsTheRecordingThatIsUnderWay)
{
    setUp();
    app().launch();
    app().controller().start();
    ASSERT_EQ(app().controller().phase().kind, Phase::Kind::recording);
    screen.setLocked(true);
    EXPECT_NE(app().controller().phase().kind, Phase::Kind::recording);
}

} // namespace tulvane::test
