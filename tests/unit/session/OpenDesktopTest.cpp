#include "Environment.h"

#include <ports/FocusedElement.h>
#include <ports/GlobalHotkeys.h>
#include <ports/IndicatorPanel.h>
#include <ports/KeyModifiers.h>
#include <ports/KeyPosting.h>
#include <ports/ModifierEvents.h>
#include <ports/OpenDesktop.h>
#include <ports/Pasteboard.h>
#include <ports/PrivacyPermissions.h>
#include <ports/ScreenLock.h>
#include <ports/StatusItem.h>
#include <ports/UserDefaults.h>
#include <support/Await.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::UnorderedElementsAre;

namespace tulvane::test {

namespace {

const QString noHotkeys = QStringLiteral(
    "There is no desktop here whose keys could be heard. Start Tulvane from a desktop session.");

/// A desktop without a display.
class NullDesktopTest : public testing::Test {
protected:
    EventLoopScheduler m_scheduler;
    std::unique_ptr<Desktop> desktop = *openDesktop({.environment = environment({})}, m_scheduler);
};

} // namespace

TEST_F(NullDesktopTest, EveryPortThatNeedsADisplayIsLackingWithItsReasonAndItsRemedy)
{
    QStringList names;
    for (const LackingPort& port : desktop->lacking) {
        names.append(port.name);
        EXPECT_EQ(port.obstacle.reason, u"No X display could be reached."_qs) << port.name.toStdString();
        EXPECT_EQ(port.obstacle.remedy, u"Start Tulvane from your desktop session, where DISPLAY is set."_qs);
    }
    EXPECT_THAT(names, UnorderedElementsAre(u"hot keys"_qs, u"modifier events"_qs, u"pasteboards"_qs,
                                            u"key posting"_qs, u"focused elements"_qs, u"keyboard grab"_qs,
                                            u"status item"_qs, u"indicator panel"_qs));
}

TEST_F(NullDesktopTest, NoPortIsNull)
{
    EXPECT_TRUE(desktop->microphone && desktop->sounds && desktop->hotkeys && desktop->modifierEvents);
    EXPECT_TRUE(desktop->pasteboards && desktop->keys && desktop->elements && desktop->permissions);
    EXPECT_TRUE(desktop->processes && desktop->workspace && desktop->transfers && desktop->memory);
    EXPECT_TRUE(desktop->presentation && desktop->keyboard && desktop->loginItem && desktop->statusItem);
    EXPECT_TRUE(desktop->screenLock && !desktop->screenLock->isLocked());
    EXPECT_TRUE(desktop->makeIndicatorPanel());
    desktop->beep();
    desktop->setEndHandler([] {});
}

TEST_F(NullDesktopTest, BothKindsOfKeysSayWhyNotAndWhatToDo)
{
    EXPECT_EQ(desktop->hotkeys->support().error(), HotkeyError::unsupported(noHotkeys));
    EXPECT_EQ(desktop->hotkeys->registerHotkey({1, 1}, {49, carbon::option}).error(),
              HotkeyError::unsupported(noHotkeys));
    EXPECT_EQ(desktop->modifierEvents->createTap(61, [](const ModifierEvent&) {}).error(),
              ModifierEventsError::unsupported(noHotkeys));
    EXPECT_FALSE(desktop->permissions->accessibility());
}

TEST_F(NullDesktopTest, TextGoesNowhereAndNothingHangs)
{
    Pasteboard& board = desktop->pasteboards->general();
    EXPECT_FALSE(board.replace({PasteboardItem::text(u"text"_qs)}));
    EXPECT_FALSE(board.replaceUnlessChanged({}, board.changeCount()));
    EXPECT_TRUE(await(board.contents()).items.isEmpty());
    const PasteTarget target = desktop->pasteboards->pasteTarget();
    EXPECT_EQ(target.window, 0U);
    EXPECT_EQ(&desktop->pasteboards->of(target.selection), &board);
    EXPECT_FALSE(await(desktop->keys->paste(target)));
    EXPECT_FALSE(await(desktop->keys->typeSpaces(1)));
    EXPECT_FALSE(await(desktop->elements->focused()));
    EXPECT_FALSE(desktop->makeIndicatorPanel()->isBlended());
    desktop->statusItem->setSymbol(u"mic.fill"_qs);
}

TEST(OpenDesktop, ADisplayThatDoesNotAnswerIsSaidToBeSo)
{
    EventLoopScheduler scheduler;
    for (const auto& session : {environment({{"DISPLAY", ":64999"}}),
                                environment({{"WAYLAND_DISPLAY", "wayland-0"}, {"DISPLAY", ":64999"}})}) {
        const auto desktop = openDesktop({.environment = session}, scheduler);
        ASSERT_FALSE(desktop);
        EXPECT_EQ(desktop.error().text(), u"The X server :64999 does not answer."_qs);
        EXPECT_EQ(windowSystem(session).error().text(), desktop.error().text());
    }
}

TEST(OpenDesktop, WithoutADisplayThereAreNoWindows)
{
    const QString expected = u"There is no X server to work on: DISPLAY is not set. Start Tulvane from your "
                             u"desktop session; a Wayland desktop needs XWayland."_qs;
    EXPECT_EQ(windowSystem(environment({})).error().text(), expected);
    EXPECT_EQ(windowSystem(environment({{"WAYLAND_DISPLAY", "wayland-0"}})).error().text(), expected);
    EXPECT_FALSE(windowSystem(environment({})).error().remedy.isEmpty());
}

} // namespace tulvane::test
