#include <support/ui/UiWorld.h>
#include <ui/viewmodels/PermissionWatch.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

TEST(PermissionWatchTest, PollsFromTheFirstHolderToTheLast)
{
    UiWorld world;
    PermissionWatch& watch = *world.ui.models().watch();
    EXPECT_FALSE(world.permissions.isPolling());
    watch.hold();
    watch.hold();
    watch.release();
    EXPECT_TRUE(world.permissions.isPolling());
    watch.release();
    EXPECT_FALSE(world.permissions.isPolling());
    watch.release();
    watch.hold();
    EXPECT_TRUE(world.permissions.isPolling()) << "one release too many is none";
    watch.release();
    EXPECT_FALSE(world.permissions.isPolling());
}

TEST(PermissionWatchTest, TheFirstHolderSeesWhatIsTrueNow)
{
    UiWorld world;
    world.privacy.accessibilityGranted = false;
    world.ui.models().watch()->hold();
    EXPECT_FALSE(world.permissions.accessibility());
    world.ui.models().watch()->release();
}

TEST(PermissionWatchTest, EndsWithTheWindows)
{
    UiWorld world;
    world.ui.models().watch()->hold();
    world.ui.detach();
    EXPECT_FALSE(world.permissions.isPolling());
    world.ui.attach(world.context());
}

class PageWatchTest : public testing::TestWithParam<SettingsTab> {};

TEST_P(PageWatchTest, HoldsItWhileItCanBeSeen)
{
    UiWorld world;
    SettingsWindowController& window = world.ui.settingsWindow();
    window.show(GetParam());
    UiWorld::settle();
    EXPECT_TRUE(world.permissions.isPolling());
    window.selection().setTab(SettingsTab::about);
    UiWorld::settle();
    EXPECT_FALSE(world.permissions.isPolling()) << "another page";
    window.show(GetParam());
    UiWorld::settle();
    EXPECT_TRUE(world.permissions.isPolling());
    window.window()->close();
    UiWorld::settle();
    EXPECT_FALSE(world.permissions.isPolling()) << "the window is hidden, the page stays";
    window.show(GetParam());
    UiWorld::settle();
    EXPECT_TRUE(world.permissions.isPolling());
}

INSTANTIATE_TEST_SUITE_P(Pages, PageWatchTest, testing::Values(SettingsTab::home, SettingsTab::settings));

TEST(PermissionWatchTest, TheSetupGuideLeavesItToThePageBehind)
{
    UiWorld world;
    world.ui.showPage(SettingsTab::settings);
    world.ui.showOnboarding();
    UiWorld::settle();
    world.ui.onboardingWindow().close();
    UiWorld::settle();
    EXPECT_TRUE(world.permissions.isPolling());
    world.ui.settingsWindow().window()->close();
    UiWorld::settle();
    EXPECT_FALSE(world.permissions.isPolling());
}

} // namespace

} // namespace tulvane::test
