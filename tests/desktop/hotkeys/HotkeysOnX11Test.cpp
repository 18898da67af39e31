// The hotkeys as the program has them, from the keys of a device to the commands.
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <platform/fake/FakeUserDefaults.h>
#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <platform/linux/x11/keyboard/X11ModifierEvents.h>
#include <ports/KeyModifiers.h>
#include <settings/AppSettings.h>
#include <support/Await.h>
#include <support/FakeClock.h>
#include <support/LogCapture.h>
#include <support/Soak.h>
#include <support/VirtualDesktop.h>
#include <support/XTestKeys.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tulvane {

namespace {

using namespace std::chrono_literals;
using test::DeviceKey;
using test::waitUntil;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using State = RegistrationState::Kind;
using TapKind = ModifierTapState::Kind;

/// The real hot keys, and a count of the repeats that they report. Every event is of the moment: the time in
/// these tests is a scripted clock's, to the millisecond.
class CountingHotkeys final : public GlobalHotkeys {
public:
    explicit CountingHotkeys(const QString& display) : m_real(display) {}

    [[nodiscard]] Result<void, HotkeyError> support() const override { return m_real.support(); }
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override
    {
        return m_real.registerHotkey(id, combination);
    }
    void setEventHandler(const EventHandler& handler) override
    {
        m_real.setEventHandler([this, handler](const HotkeyEvent& event) {
            m_repeats += event.kind == HotkeyEventKind::repeated ? 1 : 0;
            HotkeyEvent now = event;
            now.age = std::chrono::milliseconds(0);
            return handler ? handler(now) : HotkeyDelivery::eventNotHandled;
        });
    }
    void setChangeHandler(const ChangeHandler& handler) override { m_real.setChangeHandler(handler); }
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override
    {
        return m_real.symbolicHotkeys(about);
    }
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override
    {
        return m_real.display(combination);
    }
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override
    {
        return m_real.combination(key);
    }

    [[nodiscard]] int repeats() const { return m_repeats; }

private:
    X11Hotkeys m_real;
    int m_repeats = 0;
};

/// The real modifier events, and a count of what they tell of.
class CountingModifierEvents final : public ModifierEvents {
public:
    explicit CountingModifierEvents(const QString& display) : m_real(display) {}

    [[nodiscard]] Result<std::unique_ptr<Tap>, ModifierEventsError> createTap(qint64 keyCode,
                                                                              const Handler& handler) override
    {
        return m_real.createTap(keyCode, [this, handler](const ModifierEvent& event) {
            ++m_told;
            ModifierEvent now = event;
            now.age = std::chrono::milliseconds(0);
            handler(now);
        });
    }

    [[nodiscard]] int told() const { return m_told; }

private:
    X11ModifierEvents m_real;
    int m_told = 0;
};

class HotkeysOnX11 : public testing::Test {
protected:
    HotkeysOnX11()
    {
        m_controller.onStart = [this] { m_done.append(QStringLiteral("start")); };
        m_controller.onStop = [this] { m_done.append(QStringLiteral("stop")); };
        m_controller.onCancel = [this] { m_done.append(QStringLiteral("cancel")); };
    }
    void combinationDown()
    {
        m_keys.press(DeviceKey::leftAlt);
        m_keys.press(DeviceKey::space);
    }
    void combinationUp()
    {
        m_keys.release(DeviceKey::space);
        m_keys.release(DeviceKey::leftAlt);
    }
    /// Whether the machine has been told that the hotkey is down, or up.
    [[nodiscard]] bool arrives(bool isKeyDown)
    {
        return waitUntil([&] { return m_controller.machine.isKeyDown == isKeyDown; });
    }
    /// A press of the combination of this length by the clock.
    void pressFor(std::chrono::milliseconds length)
    {
        combinationDown();
        ASSERT_TRUE(arrives(true));
        m_clock.advance(length);
        combinationUp();
        ASSERT_TRUE(arrives(false));
    }
    /// The two sources come by different ways, so what one has told is awaited before the other goes on.
    void pressSingleKey(bool isDown, DeviceKey key = DeviceKey::rightControl)
    {
        const int told = m_modifiers.told();
        isDown ? m_keys.press(key) : m_keys.release(key);
        ASSERT_TRUE(waitUntil([&] { return m_modifiers.told() > told; }));
    }
    [[nodiscard]] QString done() const { return m_done.join(QLatin1Char(' ')); }

    test::VirtualDesktop m_desktop{{.windowManager = test::VirtualDesktop::WindowManager::openbox,
                                    .sessionBus = test::VirtualDesktop::SessionBus::none,
                                    .openboxKeys = {}}};
    test::XTestKeys m_keys{m_desktop.display()};
    FakeUserDefaults m_defaults;
    AppSettings m_settings{m_defaults};
    CountingHotkeys m_hotkeys{m_desktop.display()};
    CountingModifierEvents m_modifiers{m_desktop.display()};
    KeyboardShortcuts m_shortcuts{m_defaults, m_hotkeys};
    test::FakeClock m_clock;
    HotkeyController m_controller{m_settings, m_shortcuts, m_modifiers, m_clock};
    QStringList m_done;
};

TEST_F(HotkeysOnX11, ToggleStartsAndStopsWhateverTheLength)
{
    for (const auto length : {100ms, 299ms, 300ms, 1000ms}) {
        m_done.clear();
        pressFor(length);
        EXPECT_EQ(done(), QStringLiteral("start")) << length.count();
        pressFor(length);
        EXPECT_EQ(done(), QStringLiteral("start stop")) << length.count();
    }
}

TEST_F(HotkeysOnX11, HoldStopsAtTheReleaseAndCancelsATap)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    for (const auto length : {100ms, 299ms, 300ms, 1000ms})
        pressFor(length);
    EXPECT_EQ(done(), QStringLiteral("start cancel start cancel start stop start stop"));
}

TEST_F(HotkeysOnX11, HybridLatchesATap)
{
    m_settings.hotkeyMode.set(HotkeyMode::hybrid);
    for (const auto length : {100ms, 299ms}) {
        m_done.clear();
        pressFor(length);
        EXPECT_EQ(done(), QStringLiteral("start")) << length.count();
        pressFor(length);
        EXPECT_EQ(done(), QStringLiteral("start stop")) << length.count();
    }
    for (const auto length : {300ms, 1000ms}) {
        m_done.clear();
        pressFor(length);
        EXPECT_EQ(done(), QStringLiteral("start stop")) << length.count();
    }
}

TEST_F(HotkeysOnX11, AMinuteOfRepeatsIsOneStartAndOneStop)
{
    // A minute at the usual 30 repeats a second; in a soak run it takes the minute as well.
    constexpr int minuteOfRepeats = 1800;
    const bool isSoak = test::soakCount(0, 1) == 1;
    isSoak ? m_keys.setRepeat(250, 33) : m_keys.setRepeat(10, 1);
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    combinationDown();
    ASSERT_TRUE(waitUntil([&] { return m_hotkeys.repeats() >= minuteOfRepeats; }, 100s));
    m_clock.advance(60s);
    combinationUp();
    ASSERT_TRUE(arrives(false));
    EXPECT_EQ(done(), QStringLiteral("start stop"));
}

TEST_F(HotkeysOnX11, EachSingleKeyIsAHotkey)
{
    using Row = std::pair<ModifierHotkey, DeviceKey>;
    for (const auto& [setting, key] : {Row{ModifierHotkey::rightOption, DeviceKey::rightAlt},
                                       Row{ModifierHotkey::rightCommand, DeviceKey::rightSuper},
                                       Row{ModifierHotkey::rightControl, DeviceKey::rightControl},
                                       Row{ModifierHotkey::rightShift, DeviceKey::rightShift}}) {
        m_done.clear();
        m_settings.modifierHotkey.set(setting);
        ASSERT_EQ(m_controller.modifierTapState(), (ModifierTapState{TapKind::running, {}}));
        for (int round = 0; round < 2; ++round) {
            m_keys.press(key);
            EXPECT_TRUE(arrives(true));
            m_keys.release(key);
            EXPECT_TRUE(arrives(false));
        }
        EXPECT_EQ(done(), QStringLiteral("start stop")) << static_cast<int>(setting);
    }
}

TEST_F(HotkeysOnX11, TheLeftHandKeysAreNotTheSingleKey)
{
    m_settings.modifierHotkey.set(ModifierHotkey::rightShift);
    m_keys.tap(DeviceKey::leftShift);
    m_keys.press(DeviceKey::rightShift);
    EXPECT_TRUE(arrives(true));
    m_keys.release(DeviceKey::rightShift);
    EXPECT_TRUE(arrives(false));
    EXPECT_EQ(done(), QStringLiteral("start"));
}

TEST_F(HotkeysOnX11, FnDoesNotStartAndSaysWhy)
{
    const test::LogCapture log;
    m_settings.modifierHotkey.set(ModifierHotkey::fn);
    const ModifierTapState state = m_controller.modifierTapState();
    ASSERT_EQ(state.kind, TapKind::failed);
    EXPECT_EQ(state.error->description(),
              QStringLiteral("The key fn never reaches programs on this desktop. Choose another key."));
    EXPECT_THAT(log.texts("hotkey", QtCriticalMsg),
                ElementsAre(QStringLiteral(
                    "Could not start modifier key tap (Input Monitoring permission missing?)")));
    pressFor(1s);
    EXPECT_EQ(done(), QStringLiteral("start")) << "the combination works all the same";
}

TEST_F(HotkeysOnX11, CombinationAndSingleKeyTogetherAreOnePress)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    m_settings.modifierHotkey.set(ModifierHotkey::rightControl);
    combinationDown();
    ASSERT_TRUE(arrives(true));
    pressSingleKey(true);
    m_clock.advance(1s);
    combinationUp();
    ASSERT_TRUE(arrives(false)) << "the first key up ends the press";
    pressSingleKey(false);
    EXPECT_EQ(done(), QStringLiteral("start stop"));
    pressFor(1s);
    EXPECT_EQ(done(), QStringLiteral("start stop start stop"));
}

TEST_F(HotkeysOnX11, TheSingleKeyIsHeardWhileTheCombinationIsHeld)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    m_settings.modifierHotkey.set(ModifierHotkey::rightControl);
    combinationDown();
    ASSERT_TRUE(arrives(true));
    pressSingleKey(true);
    m_clock.advance(1s);
    pressSingleKey(false);
    ASSERT_TRUE(arrives(false));
    EXPECT_EQ(done(), QStringLiteral("start stop"));
    combinationUp();
    pressFor(1s);
    EXPECT_EQ(done(), QStringLiteral("start stop start stop"));
}

TEST_F(HotkeysOnX11, TheCombinationIsHeardWhileTheSingleKeyIsHeld)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    m_settings.modifierHotkey.set(ModifierHotkey::rightOption);
    m_shortcuts.setShortcut(Shortcut{101, carbon::option}, ShortcutName::dictate());
    pressSingleKey(true, DeviceKey::rightAlt);
    ASSERT_TRUE(arrives(true));
    m_keys.press(DeviceKey::f9);
    m_clock.advance(1s);
    m_keys.release(DeviceKey::f9);
    ASSERT_TRUE(arrives(false));
    pressSingleKey(false, DeviceKey::rightAlt);
    EXPECT_EQ(done(), QStringLiteral("start stop"));
}

TEST_F(HotkeysOnX11, TheKeysMayGoUpInEitherOrder)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    for (const bool modifierFirst : {true, false}) {
        m_done.clear();
        combinationDown();
        ASSERT_TRUE(arrives(true));
        m_clock.advance(1s);
        m_keys.release(modifierFirst ? DeviceKey::leftAlt : DeviceKey::space);
        m_keys.release(modifierFirst ? DeviceKey::space : DeviceKey::leftAlt);
        ASSERT_TRUE(arrives(false));
        EXPECT_EQ(done(), QStringLiteral("start stop"));
    }
}

TEST_F(HotkeysOnX11, ACombinationOfAnotherProgramIsSaidToBeTakenUntilItIsFree)
{
    const test::LogCapture log;
    test::XTestKeys other(m_desktop.display());
    constexpr std::uint16_t control = 4;
    ASSERT_TRUE(other.grab(DeviceKey::f9, control));
    m_shortcuts.setShortcut(Shortcut{101, carbon::control}, ShortcutName::dictate());
    const RegistrationState state = m_shortcuts.registration(ShortcutName::dictate());
    EXPECT_EQ(state, (RegistrationState{State::failed, HotkeyError::taken(10)}));
    EXPECT_THAT(log.texts("hotkey", QtCriticalMsg), SizeIs(1));
    EXPECT_TRUE(log.contains(QStringLiteral("Error registering hotkey key code 101, modifiers 4096: 10")));

    other.ungrab(DeviceKey::f9, control);
    m_shortcuts.registerAgain();
    EXPECT_EQ(m_shortcuts.registration(ShortcutName::dictate()), (RegistrationState{State::registered, {}}));
    m_keys.press(DeviceKey::leftControl);
    m_keys.press(DeviceKey::f9);
    EXPECT_TRUE(arrives(true));
    EXPECT_EQ(done(), QStringLiteral("start"));
}

TEST_F(HotkeysOnX11, AnotherLayoutLeavesTheHotkeyOnAndAHeldKeyHeld)
{
    m_settings.hotkeyMode.set(HotkeyMode::hold);
    m_shortcuts.setShortcut(Shortcut{9, carbon::option}, ShortcutName::dictate());
    m_keys.press(DeviceKey::leftAlt);
    m_keys.press(DeviceKey::v);
    ASSERT_TRUE(arrives(true));
    m_desktop.setKeyboardLayout(QStringLiteral("ru"));
    EXPECT_TRUE(waitUntil([&] { return m_controller.hotkeyDescription() == QStringLiteral("Alt+М"); }));
    m_clock.advance(1s);
    m_keys.release(DeviceKey::v);
    m_keys.release(DeviceKey::leftAlt);
    ASSERT_TRUE(arrives(false));
    m_keys.press(DeviceKey::leftAlt);
    m_keys.press(DeviceKey::v);
    ASSERT_TRUE(arrives(true));
    EXPECT_EQ(done(), QStringLiteral("start stop start"));
}

TEST_F(HotkeysOnX11, TheEndOfTheDesktopIsShownAndNothingElse)
{
    const test::LogCapture log;
    m_settings.modifierHotkey.set(ModifierHotkey::rightControl);
    m_desktop.killServer();
    EXPECT_TRUE(waitUntil([&] {
        return m_shortcuts.registration(ShortcutName::dictate()).kind == State::failed &&
               m_controller.modifierTapState().kind == TapKind::failed;
    }));
    EXPECT_EQ(m_shortcuts.registration(ShortcutName::dictate()).error, HotkeyError::unreachable());
    EXPECT_EQ(m_controller.modifierTapState().error, ModifierEventsError::unreachable());
    EXPECT_EQ(m_controller.hotkeyDescription(), QStringLiteral("Alt+Space or Right ⌃ Control"));
    EXPECT_THAT(m_done, IsEmpty());
}

} // namespace

} // namespace tulvane
