#include "ResidentDesktop.h"

#include <support/Await.h>
#include <support/screen/ScriptedLoginManager.h>
#include <support/screen/ScriptedSaver.h>

#include <gtest/gtest.h>

namespace tulvane::test {
namespace {

// The real program on a desktop whose screen is locked in either of the ways in which desktops tell it.
class ScreenLockTest : public testing::Test {
protected:
    [[nodiscard]] QString bus() const
    {
        return here.desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    }
    [[nodiscard]] bool isLocked() const { return here.status()[QStringLiteral("locked")].toBool(); }
    void expectNothingStarts()
    {
        const auto refused = here.tulvane(words("start"));
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.err,
                  QStringLiteral("tulvane: The screen is locked: nothing is recorded until it is "
                                 "unlocked.\n"));
        here.pressHotkey();
        here.keys.tap(DeviceKey::rightControl);
        EXPECT_EQ(here.status()[QStringLiteral("phase")], QStringLiteral("idle"));
        EXPECT_EQ(here.sound.openMicrophones(), 0);
    }

    ResidentDesktop here;
};

TEST_F(ScreenLockTest, ALockEndsTheRecordingAndItsTextIsInTheHistoryAndNowhereElse)
{
    ScriptedSaver saver(bus(), QStringLiteral("org.gnome.ScreenSaver"));
    here.launch();
    EXPECT_EQ(here.tulvane(words("settings set modifierHotkey rightControl")).status, 0);
    here.openEntry();
    here.pressHotkey();
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    here.speak(said);
    saver.setActive(true);
    EXPECT_TRUE(here.waitForPhase(QStringLiteral("idle")));
    EXPECT_EQ(here.status()[QStringLiteral("historyCount")], 1);
    EXPECT_EQ(here.entryText(), QString());
    expectNothingStarts();

    saver.setActive(false);
    ASSERT_TRUE(waitUntil([&] { return !isLocked(); }));
    here.pressHotkey();
    ASSERT_TRUE(here.waitForPhase(QStringLiteral("recording")));
    here.speak(said);
    here.pressHotkey();
    EXPECT_TRUE(here.waitForEntry(heard)) << qPrintable(here.entryText());
}

TEST_F(ScreenLockTest, OneThatIsLockedAtTheStartIsLockedForUsToo)
{
    ScriptedLoginManager manager(bus(), true);
    here.launch();
    ASSERT_TRUE(waitUntil([&] { return isLocked(); }));
    expectNothingStarts();
    const auto doctor = here.tulvane(words("doctor"));
    EXPECT_TRUE(doctor.out.contains(QStringLiteral("  no  screen           The screen is locked")))
        << qPrintable(doctor.out);
    manager.setLockedHint(false);
    ASSERT_TRUE(waitUntil([&] { return !isLocked(); }));
    EXPECT_EQ(here.tulvane(words("start")).status, 0);
}

} // namespace
} // namespace tulvane::test
