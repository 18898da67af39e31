#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/windows/SettingsWindowController.h>

#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

TEST(MainWindowTest, IsBuiltWhenItIsFirstShownAndKeptWhenItIsClosed)
{
    UiWorld world;
    SettingsWindowController& controller = world.ui.settingsWindow();
    EXPECT_EQ(controller.window(), nullptr);
    controller.show(SettingsTab::history);
    QQuickView* const window = controller.window();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(window->title(), QStringLiteral("Tulvane"));
    // 900 x 600, but the offscreen screen is only 800 wide.
    EXPECT_EQ(window->minimumSize(), QSize(800, 600));
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(window->isVisible());
    controller.show(SettingsTab::about);
    EXPECT_EQ(controller.window(), window);
    EXPECT_TRUE(window->isVisible());
}

TEST(MainWindowTest, TheSidebarListsThePagesAndSelectsThem)
{
    UiWorld world;
    world.ui.showPage(SettingsTab::home);
    SettingsWindowController& controller = world.ui.settingsWindow();
    WindowProbe probe(*controller.window());
    for (const SettingsTab tab : allCases<SettingsTab>()) {
        probe.click(QStringLiteral("sidebar.") + rawValue(tab));
        EXPECT_EQ(controller.selection().tab(), tab);
        EXPECT_TRUE(probe.shows(title(tab)));
    }
    EXPECT_TRUE(probe.shows(QStringLiteral("Version 0.1.0")));
}

TEST(MainWindowTest, TheFrameComesBackWhereItWas)
{
    UiWorld world;
    world.defaults.set(QStringLiteral("NSWindow Frame MainWindow"),
                       QStringLiteral("-40 100 950 640 0 0 800 800 "));
    world.ui.showPage(SettingsTab::home);
    // The offscreen screen is 800 x 800: the frame is cut to it and moved into it.
    const QRect frame = world.ui.settingsWindow().window()->geometry();
    EXPECT_EQ(frame.size(), QSize(800, 640));
    // Give or take the frame that the platform draws around a window.
    EXPECT_NEAR(frame.x(), 0, 4);
    EXPECT_NEAR(frame.y(), 60, 4);
}

} // namespace

} // namespace tulvane::test
