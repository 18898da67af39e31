#include <support/ui/UiWorld.h>
#include <ui/windows/SettingsWindowController.h>
#include <ui/windows/VisibleWindows.h>

#include <QGuiApplication>
#include <QQuickView>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace tulvane::test {

namespace {

/// A window with these flags on the screen.
std::unique_ptr<QWindow> shown(Qt::WindowFlags flags)
{
    auto window = std::make_unique<QWindow>();
    window->setFlags(flags);
    window->show();
    UiWorld::settle();
    return window;
}

} // namespace

TEST(VisibleWindowsTest, PanelsMenusAndTheTrayDoNotCount)
{
    const auto indicator = shown(Qt::ToolTip | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    const auto panel = shown(Qt::Tool | Qt::WindowDoesNotAcceptFocus);
    const auto menu = shown(Qt::Popup);
    const auto tray = shown(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    EXPECT_THAT(visibleWindows(), IsEmpty());
    EXPECT_FALSE(bringVisibleWindowsToFront());
}

TEST(VisibleWindowsTest, OneThatIsClosedOrPutAwayDoesNotCount)
{
    const auto window = shown(Qt::Window);
    EXPECT_THAT(visibleWindows(), ElementsAre(window.get()));
    window->showMinimized();
    EXPECT_THAT(visibleWindows(), IsEmpty());
    window->showNormal();
    window->close();
    EXPECT_THAT(visibleWindows(), IsEmpty());
}

TEST(VisibleWindowsTest, WhatWasPutAwayComesBack)
{
    EXPECT_FALSE(restoreMinimizedWindows());
    const auto window = shown(Qt::Window);
    EXPECT_FALSE(restoreMinimizedWindows());
    window->showMinimized();
    EXPECT_TRUE(restoreMinimizedWindows());
    EXPECT_THAT(visibleWindows(), ElementsAre(window.get()));
}

TEST(VisibleWindowsTest, TheOneWithTheFocusKeepsIt)
{
    UiWorld world;
    world.ui.showPage(SettingsTab::home);
    QQuickView& main = *world.ui.settingsWindow().window();
    const auto other = shown(Qt::Window);
    other->requestActivate();
    UiWorld::settle();
    ASSERT_EQ(QGuiApplication::focusWindow(), other.get());
    EXPECT_TRUE(bringVisibleWindowsToFront(&main));
    UiWorld::settle();
    EXPECT_EQ(QGuiApplication::focusWindow(), other.get());
}

} // namespace tulvane::test
