#include <platform/linux/x11/windows/TaskBarEntries.h>
#include <support/Await.h>
#include <support/windows/RealDesktop.h>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class TaskBarEntriesTest : public testing::Test {
protected:
    [[nodiscard]] bool isHidden(QWindow& window) const
    {
        const QStringList states = m_view.atoms(idOf(window), "_NET_WM_STATE");
        return states.contains(QStringLiteral("_NET_WM_STATE_SKIP_TASKBAR")) &&
               states.contains(QStringLiteral("_NET_WM_STATE_SKIP_PAGER"));
    }
    [[nodiscard]] bool isListed(QWindow& window) const
    {
        return m_view.atoms(idOf(window), "_NET_WM_STATE").filter(QStringLiteral("SKIP")).isEmpty();
    }

    ServerView& m_view = realView();
    TaskBarEntries m_entries;
};

} // namespace

TEST_F(TaskBarEntriesTest, AWindowThatIsThereLosesItsEntryAndGetsItBackWithoutDisappearing)
{
    PlainWindow window;
    ASSERT_TRUE(showAndWait(window, m_view));
    EXPECT_TRUE(isListed(window));
    m_view.watch(idOf(window));
    const WId id = window.winId();
    for (int i = 0; i < 3; ++i) {
        m_entries.setHidden(true);
        EXPECT_TRUE(waitUntil([&] { return isHidden(window); }));
        m_entries.setHidden(false);
        EXPECT_TRUE(waitUntil([&] { return isListed(window); }));
    }
    EXPECT_EQ(m_view.disappearances(static_cast<xcb_window_t>(id)), 0);
    EXPECT_EQ(window.winId(), id);
    EXPECT_TRUE(window.isVisible());
}

TEST_F(TaskBarEntriesTest, AWindowThatComesLaterHasNoneEither)
{
    m_entries.setHidden(true);
    PlainWindow window;
    ASSERT_TRUE(showAndWait(window, m_view));
    EXPECT_TRUE(waitUntil([&] { return isHidden(window); }));
    // Nor does it after it has been closed and shown again.
    window.hide();
    ASSERT_TRUE(waitUntil([&] { return !m_view.isViewable(idOf(window)); }));
    ASSERT_TRUE(showAndWait(window, m_view));
    EXPECT_TRUE(waitUntil([&] { return isHidden(window); }));
    m_entries.setHidden(false);
    EXPECT_TRUE(waitUntil([&] { return isListed(window); }));
}

TEST_F(TaskBarEntriesTest, AWindowThatWasHiddenMeanwhileFollowsWhatHoldsWhenItIsShown)
{
    PlainWindow window;
    window.create();
    m_entries.setHidden(true);
    m_entries.setHidden(false);
    ASSERT_TRUE(showAndWait(window, m_view));
    EXPECT_TRUE(isListed(window));
    window.hide();
    ASSERT_TRUE(waitUntil([&] { return !m_view.isViewable(idOf(window)); }));
    m_entries.setHidden(true);
    m_entries.setHidden(false);
    ASSERT_TRUE(showAndWait(window, m_view));
    EXPECT_TRUE(isListed(window));
}

TEST_F(TaskBarEntriesTest, OtherStatesStay)
{
    PlainWindow window;
    window.setFlag(Qt::WindowStaysOnTopHint);
    m_entries.setHidden(true);
    ASSERT_TRUE(showAndWait(window, m_view));
    const auto isAbove = [&] {
        return m_view.atoms(idOf(window), "_NET_WM_STATE").contains(QStringLiteral("_NET_WM_STATE_ABOVE"));
    };
    EXPECT_TRUE(waitUntil([&] { return isHidden(window) && isAbove(); }));
    m_entries.setHidden(false);
    EXPECT_TRUE(waitUntil([&] { return isListed(window) && isAbove(); }));
}

TEST_F(TaskBarEntriesTest, WhatHasNoEntryAnywayIsLeftAlone)
{
    m_entries.setHidden(true);
    PlainWindow menu;
    menu.setFlags(Qt::ToolTip | Qt::BypassWindowManagerHint);
    ASSERT_TRUE(showAndWait(menu, m_view));
    EXPECT_TRUE(m_view.isUnmanaged(idOf(menu)));
    EXPECT_TRUE(isListed(menu));
    m_entries.setHidden(false);
}

} // namespace tulvane::test
