// The user goes to another window while a text is on its way.
#include "InsertionFixture.h"

#include <gmock/gmock.h>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

const auto said = QStringLiteral("Blåbærsyltetøy «på brød» ");
constexpr int xKeyInsert = 118;

class WindowSwitch : public InsertionFixture {
protected:
    WindowSwitch()
    {
        open(Target::gtkTextView);
        m_field = front();
    }
    /// Back to the window that `open` brought to the front.
    void focusField()
    {
        xcb_set_input_focus(m_link->connection(), XCB_INPUT_FOCUS_PARENT, m_field, XCB_CURRENT_TIME);
        m_link->catchUp();
        ASSERT_EQ(front(), m_field);
    }

    xcb_window_t m_field = noWindow;
};

TEST_F(WindowSwitch, afterTheTargetWasDecidedNothingArrivesAnywhereAndTheTextWaitsOnTheClipboard)
{
    X11Peer other(m_desktop.display(), "XTerm");
    focusField();
    // The keys wait for the end of a grab, as of a hotkey that is still held.
    XTestKeys grabber(m_desktop.display());
    ASSERT_TRUE(grabber.grab(DeviceKey::f9, 0));
    m_fingers.press(DeviceKey::f9);
    const auto task = start(said);
    ASSERT_TRUE(waitUntil([&] { return clipboardText() == said.trimmed().toUtf8(); }));
    other.takeFocus();
    m_fingers.release(DeviceKey::f9);
    EXPECT_EQ(finished(task), InsertionResult::copiedToClipboard);
    other.catchUp();
    EXPECT_THAT(other.keys(), testing::IsEmpty());
    EXPECT_EQ(clipboardText(), said.toUtf8());
    EXPECT_TRUE(read(QStringLiteral("PRIMARY")) == m_selected);
    focusField();
    expectHeld({});
}

TEST_F(WindowSwitch, whileTheClipboardIsSavedATerminalGetsTheTextAndNotTheUsersSelection)
{
    X11Peer terminal(m_desktop.display(), "XTerm");
    focusField();
    bool isSwitched = false;
    m_clipboardOwner.onRequest = [&](const QString&) {
        if (!std::exchange(isSwitched, true))
            terminal.takeFocus();
    };
    const auto task = start(said);
    ASSERT_TRUE(waitUntil([&] {
        terminal.catchUp();
        return terminal.keys().size() >= 4;
    }));
    EXPECT_EQ(terminal.keys().at(1).key, xKeyInsert);
    EXPECT_EQ(terminal.readTarget(QStringLiteral("UTF8_STRING"), QStringLiteral("PRIMARY")),
              said.trimmed().toUtf8());
    EXPECT_EQ(finished(task), InsertionResult::pasted);
    focusField();
    expectHeld({});
    expectUsersContent();
}

} // namespace
} // namespace tulvane::test
