#include <app/program/DesktopDiagnostics.h>
#include <app/program/HotkeyDiagnostics.h>
#include <hotkeys/HotkeyController.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <platform/fake/FakeAudioInput.h>
#include <platform/fake/FakeGlobalHotkeys.h>
#include <platform/fake/FakeModifierEvents.h>
#include <platform/fake/FakePrivacyPermissions.h>
#include <platform/fake/FakeUserDefaults.h>
#include <settings/AppSettings.h>
#include <support/FakeClock.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

TEST(SessionFindings, NameTheSessionAndTheDisplay)
{
    const Diagnostics diagnostics = sessionDiagnostics({.kind = QStringLiteral("X11"),
                                                        .desktop = QStringLiteral("XFCE"),
                                                        .display = QStringLiteral(":0"),
                                                        .displayReached = true});
    EXPECT_EQ(diagnostics,
              (Diagnostics{Diagnostic::good(QStringLiteral("session"), QStringLiteral("X11, XFCE")),
                           Diagnostic::good(QStringLiteral("display"), QStringLiteral(":0"))}));
}

TEST(SessionFindings, NameADesktopOnce)
{
    const auto named = [](const QString& kind, const QString& desktop) {
        return sessionDiagnostics({.kind = kind, .desktop = desktop, .display = {}, .displayReached = true})
            .front()
            .text;
    };
    EXPECT_EQ(named(QStringLiteral("Wayland, GNOME"), QStringLiteral("GNOME")), u"Wayland, GNOME");
    EXPECT_EQ(named(QStringLiteral("Wayland, GNOME"), QStringLiteral("ubuntu:GNOME")),
              u"Wayland, ubuntu:GNOME");
    EXPECT_EQ(named(QStringLiteral("Wayland, wlroots"), QStringLiteral("sway")), u"Wayland, wlroots, sway");
    EXPECT_EQ(named(QStringLiteral("Wayland, KDE"), QString()), u"Wayland, KDE");
}

TEST(SessionFindings, WithoutADesktopOrAServerSayWhatToDo)
{
    SessionFacts facts{.kind = QStringLiteral("none"), .desktop = {}, .display = {}};
    Diagnostics diagnostics = sessionDiagnostics(facts);
    EXPECT_FALSE(diagnostics[0].works);
    EXPECT_EQ(diagnostics[1].text, QStringLiteral("DISPLAY is not set."));
    facts.display = QStringLiteral(":9");
    diagnostics = sessionDiagnostics(facts);
    EXPECT_EQ(diagnostics[1].text, QStringLiteral("The X server :9 does not answer."));
    for (const Diagnostic& diagnostic : diagnostics)
        EXPECT_FALSE(diagnostic.remedy.isEmpty());
}

TEST(MicrophoneDiagnostic, NamesTheDeviceWithoutOpeningIt)
{
    FakeAudioInput input;
    input.setDeviceName(QStringLiteral("Headset"));
    input.setFormat({44100, 1});
    EXPECT_EQ(microphoneDiagnostic(input),
              Diagnostic::good(QStringLiteral("microphone"), QStringLiteral("Headset (44100 Hz, 1 ch)")));
    EXPECT_EQ(input.calls().count(QStringLiteral("start")), 0);
    input.setFormat({});
    EXPECT_FALSE(microphoneDiagnostic(input).works);
    EXPECT_FALSE(microphoneDiagnostic(input).remedy.isEmpty());
}

TEST(SoundServerDiagnostic, NamesTheServerOrSaysWhichToStart)
{
    EXPECT_EQ(soundServerDiagnostic(QStringLiteral("pulseaudio 16.1")),
              Diagnostic::good(QStringLiteral("sound server"), QStringLiteral("pulseaudio 16.1")));
    EXPECT_FALSE(soundServerDiagnostic({}).works);
    EXPECT_FALSE(soundServerDiagnostic({}).remedy.isEmpty());
}

TEST(PermissionFindings, GiveEachNoItsReasonAndItsRemedy)
{
    FakePrivacyPermissions permissions;
    for (const Diagnostic& diagnostic : permissionDiagnostics(permissions, true))
        EXPECT_TRUE(diagnostic.works);
    permissions.obstacles[Permission::accessibility] = {QStringLiteral("Why"), QStringLiteral("What to do")};
    const Diagnostics diagnostics = permissionDiagnostics(permissions, true);
    EXPECT_TRUE(diagnostics[0].works);
    EXPECT_EQ(diagnostics[1], Diagnostic::bad(QStringLiteral("pasting"), QStringLiteral("Why"),
                                              QStringLiteral("What to do")));
    EXPECT_TRUE(diagnostics[2].works);
}

TEST(PermissionFindings, KeysNeedNotBeWatchedForACombination)
{
    FakePrivacyPermissions permissions;
    permissions.obstacles[Permission::inputMonitoring] = {QStringLiteral("Why"),
                                                          QStringLiteral("What to do")};
    EXPECT_EQ(permissionDiagnostics(permissions, true)[2],
              Diagnostic::bad(QStringLiteral("watching keys"), QStringLiteral("Why"),
                              QStringLiteral("What to do")));
    const Diagnostic diagnostic = permissionDiagnostics(permissions, false)[2];
    EXPECT_TRUE(diagnostic.works);
    EXPECT_EQ(diagnostic.remedy, QString()) << "it would be the next thing to do";
}

TEST(InsertionDiagnostic, IsTheWayThatATextWillTake)
{
    FakePrivacyPermissions permissions;
    const auto text = [&](InsertionMethod method, bool canWrite) {
        return insertionDiagnostic(method, permissions, canWrite).text;
    };
    EXPECT_EQ(text(InsertionMethod::paste, false), QStringLiteral("pastes"));
    EXPECT_EQ(text(InsertionMethod::accessibilityThenPaste, true),
              QStringLiteral("writes into the field where that works, else pastes"));
    EXPECT_FALSE(insertionDiagnostic(InsertionMethod::accessibilityThenPaste, permissions, false).works);
    permissions.accessibilityGranted = false;
    permissions.obstacles[Permission::accessibility] = {QStringLiteral("Why"), QStringLiteral("What to do")};
    EXPECT_EQ(text(InsertionMethod::paste, true), QStringLiteral("Why"));
    EXPECT_TRUE(insertionDiagnostic(InsertionMethod::clipboardOnly, permissions, false).works);
}

TEST(ModelDiagnostic, TellsHowToFetchWhatIsMissing)
{
    EXPECT_EQ(modelDiagnostic({.id = QStringLiteral("small"), .file = {}}),
              Diagnostic::bad(QStringLiteral("model"), QStringLiteral("small has not been downloaded."),
                              QStringLiteral("tulvane models download small")));
    EXPECT_TRUE(modelDiagnostic({.id = QStringLiteral("small"), .file = QStringLiteral("/x")}).works);
}

TEST(AcceleratorDiagnostic, ListsWhatComputes)
{
    EXPECT_EQ(acceleratorDiagnostic({QStringLiteral("Vulkan0: A"), QStringLiteral("CPU: B")}).text,
              QStringLiteral("Vulkan0: A, CPU: B"));
    EXPECT_FALSE(acceleratorDiagnostic({}).works);
}

class HotkeyFindingsTest : public ::testing::Test {
protected:
    [[nodiscard]] Diagnostics diagnostics() { return hotkeyDiagnostics(m_shortcuts, m_hotkeys); }

    FakeUserDefaults m_defaults;
    AppSettings m_settings{m_defaults};
    FakeGlobalHotkeys m_keys;
    KeyboardShortcuts m_shortcuts{m_defaults, m_keys};
    FakeModifierEvents m_events;
    test::FakeClock m_clock;
    HotkeyController m_hotkeys{m_settings, m_shortcuts, m_events, m_clock};
};

TEST_F(HotkeyFindingsTest, SayHowBothSourcesStand)
{
    EXPECT_TRUE(diagnostics()[0].works);
    EXPECT_TRUE(diagnostics()[0].text.endsWith(QStringLiteral(" is registered")))
        << qPrintable(diagnostics()[0].text);
    EXPECT_EQ(diagnostics()[1].text, QStringLiteral("none is set"));
    m_settings.modifierHotkey.set(ModifierHotkey::rightControl);
    EXPECT_EQ(diagnostics()[1].text, QStringLiteral("is watched"));
}

TEST_F(HotkeyFindingsTest, ACombinationThatAnotherProgramHoldsIsTold)
{
    m_shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    m_keys.failRegistrations(HotkeyError::taken(10));
    m_shortcuts.setShortcut(Shortcut{40, 0x800}, ShortcutName::dictate());
    EXPECT_FALSE(diagnostics()[0].works);
    EXPECT_EQ(diagnostics()[0].remedy, HotkeyError::taken(10).description());
}

TEST_F(HotkeyFindingsTest, ACombinationThatIsFreeIsNamed)
{
    m_shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    const KeyCombination altSpace{49, 0x800};
    m_keys.takeElsewhere(altSpace);
    m_shortcuts.setShortcut(Shortcut{49, 0x800}, ShortcutName::dictate());
    const KeyCombination controlAltSpace{49, 0x1800};
    const QString free = m_keys.display(controlAltSpace).text() + QStringLiteral(" is free.");
    EXPECT_FALSE(diagnostics()[0].works);
    EXPECT_TRUE(diagnostics()[0].remedy.endsWith(free)) << qPrintable(diagnostics()[0].remedy);
}

TEST_F(HotkeyFindingsTest, AKeyThatCannotBeWatchedIsTold)
{
    m_events.failTaps(ModifierEventsError::unreachable());
    m_settings.modifierHotkey.set(ModifierHotkey::rightControl);
    EXPECT_FALSE(diagnostics()[1].works);
    EXPECT_EQ(diagnostics()[1].remedy, ModifierEventsError::unreachable().description());
}

TEST_F(HotkeyFindingsTest, NoHotkeyAtAllIsAFault)
{
    m_shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    EXPECT_FALSE(diagnostics()[0].works);
    m_settings.modifierHotkey.set(ModifierHotkey::rightControl);
    EXPECT_TRUE(diagnostics()[0].works);
}

TEST(Diagnostics, EachEntryOfThePasteTableThatMakesNoSenseHasALine)
{
    EXPECT_TRUE(pasteTableDiagnostics({}).isEmpty());
    const Diagnostics found = pasteTableDiagnostics({QStringLiteral("one"), QStringLiteral("two")});
    ASSERT_EQ(found.size(), 2);
    EXPECT_FALSE(found[1].works);
    EXPECT_EQ(found[1].text, QStringLiteral("two"));
    EXPECT_TRUE(found[1].remedy.contains(QStringLiteral("terminalWindowClasses")));
}

} // namespace
} // namespace tulvane
