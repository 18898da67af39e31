#include <platform/fake/FakeGlobalHotkeys.h>
#include <ports/KeyModifiers.h>
#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>
#include <ui/windows/WindowKeys.h>

#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

class WindowKeysTest : public ::testing::Test {
protected:
    WindowKeysTest() { world.ui.showPage(SettingsTab::home); }

    [[nodiscard]] SettingsWindowController& main() { return world.ui.settingsWindow(); }
    [[nodiscard]] QQuickView& window() { return *main().window(); }
    [[nodiscard]] SettingsTab tab() { return main().selection().tab(); }
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier)
    {
        WindowProbe(window()).press(key, modifiers);
        UiWorld::settle();
    }

    UiWorld world;
};

TEST_F(WindowKeysTest, EachPageHasItsDigit)
{
    int digit = Qt::Key_1;
    for (const SettingsTab page : allCases<SettingsTab>()) {
        press(digit++);
        EXPECT_EQ(tab(), page);
    }
}

TEST_F(WindowKeysTest, PageKeysGoRoundThePages)
{
    press(Qt::Key_PageUp);
    EXPECT_EQ(tab(), SettingsTab::about);
    press(Qt::Key_PageDown);
    EXPECT_EQ(tab(), SettingsTab::home);
    press(Qt::Key_PageDown);
    EXPECT_EQ(tab(), SettingsTab::models);
}

TEST_F(WindowKeysTest, CommaOpensTheSettings)
{
    press(Qt::Key_Comma);
    EXPECT_EQ(tab(), SettingsTab::settings);
}

TEST_F(WindowKeysTest, WClosesTheWindowInFrontAndNoOther)
{
    world.ui.showOnboarding();
    QQuickView* const guide = world.ui.onboardingWindow().window();
    UiWorld::settle();
    WindowProbe(*guide).press(Qt::Key_W, Qt::ControlModifier);
    UiWorld::settle();
    EXPECT_FALSE(guide->isVisible());
    EXPECT_TRUE(window().isVisible());
    window().requestActivate();
    UiWorld::settle();
    press(Qt::Key_W);
    EXPECT_FALSE(window().isVisible());
    EXPECT_EQ(world.quits, 0);
}

TEST_F(WindowKeysTest, QQuitsFromEitherWindow)
{
    press(Qt::Key_Q);
    EXPECT_EQ(world.quits, 1);
    world.ui.showOnboarding();
    UiWorld::settle();
    WindowProbe(*world.ui.onboardingWindow().window()).press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(world.quits, 2);
}

TEST_F(WindowKeysTest, F1ShowsTheSetupGuide)
{
    press(Qt::Key_F1, Qt::NoModifier);
    ASSERT_NE(world.ui.onboardingWindow().window(), nullptr);
    EXPECT_TRUE(world.ui.onboardingWindow().window()->isVisible());
}

TEST_F(WindowKeysTest, FSearchesTheHistory)
{
    world.installModel(world.settings.selectedModelID());
    world.dictate(QStringLiteral("hest"));
    world.dictate(QStringLiteral("ku"));
    press(Qt::Key_F);
    EXPECT_EQ(tab(), SettingsTab::history);
    WindowProbe probe(window());
    EXPECT_TRUE(probe.item(QStringLiteral("history.search")).hasActiveFocus());
    probe.type(QStringLiteral("HEST"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Hest")));
    EXPECT_FALSE(probe.shows(QStringLiteral("Ku")));
    probe.type(QStringLiteral("er"));
    EXPECT_TRUE(probe.shows(QStringLiteral("Nothing found")));
    probe.press(Qt::Key_Escape);
    EXPECT_TRUE(probe.shows(QStringLiteral("Ku")));
    EXPECT_TRUE(window().isVisible());
}

TEST_F(WindowKeysTest, APageThatWasJustOpenedScrolls)
{
    press(Qt::Key_5);
    WindowProbe probe(window());
    EXPECT_TRUE(probe.shows(QStringLiteral("How you start and stop dictation.")));
    press(Qt::Key_End, Qt::NoModifier);
    EXPECT_FALSE(probe.scrollTo(1e6)) << "it is at its end";
    press(Qt::Key_Home, Qt::NoModifier);
    EXPECT_TRUE(probe.scrollTo(1)) << "it was at its top";
    press(Qt::Key_PageDown, Qt::NoModifier);
    EXPECT_FALSE(probe.scrollTo(100)) << "it is further down";
}

TEST_F(WindowKeysTest, TheSidebarIsOneStopOfTabAndArrowsTurnThePages)
{
    WindowProbe probe(window());
    const QStringList stops = probe.tabOrder();
    int pages = 0;
    for (const SettingsTab page : allCases<SettingsTab>())
        pages += static_cast<int>(stops.count(title(page)));
    EXPECT_LE(pages, 1) << qPrintable(stops.join(u' '));
    probe.item(QStringLiteral("sidebar.home")).forceActiveFocus(Qt::TabFocusReason);
    press(Qt::Key_Down, Qt::NoModifier);
    EXPECT_EQ(tab(), SettingsTab::models);
    EXPECT_TRUE(probe.item(QStringLiteral("sidebar.models")).hasActiveFocus());
    press(Qt::Key_Up, Qt::NoModifier);
    press(Qt::Key_Up, Qt::NoModifier);
    EXPECT_EQ(tab(), SettingsTab::home);
}

TEST_F(WindowKeysTest, TheModesOfTheHotkeyAreOneStopOfTab)
{
    press(Qt::Key_5);
    const QStringList stops = WindowProbe(window()).tabOrder();
    int modes = 0;
    for (const HotkeyMode mode : allCases<HotkeyMode>())
        modes += static_cast<int>(stops.count(title(mode)));
    EXPECT_EQ(modes, 1) << qPrintable(stops.join(u' '));
}

TEST(WindowKeyTitles, NameWhatHoldsAKey)
{
    FakeGlobalHotkeys hotkeys;
    const auto titleOf = windowKeyTitles(hotkeys);
    const auto w = virtualKeys::all[13];
    ASSERT_STREQ(w.name, "W");
    EXPECT_EQ(titleOf({w.code, carbon::control}), QStringLiteral("Close"));
    EXPECT_EQ(titleOf({w.code, carbon::control | carbon::shift}), std::nullopt);
    EXPECT_EQ(titleOf({w.code, carbon::option}), std::nullopt);
    EXPECT_EQ(titleOf({virtualKeys::f1, 0}), QStringLiteral("Setup guide"));
    EXPECT_EQ(titleOf({virtualKeys::f1, carbon::control}), std::nullopt);
    EXPECT_EQ(titleOf({virtualKeys::pageDown, carbon::control}), QStringLiteral("Next page"));
    EXPECT_EQ(titleOf({virtualKeys::space, carbon::control}), std::nullopt);
    // Where the layout has another letter there, the window goes by that letter.
    hotkeys.setDisplay([](const KeyCombination&) { return KeyDisplay{{u"Ctrl"_qs, u"Q"_qs}, u"+"_qs}; });
    EXPECT_EQ(titleOf({w.code, carbon::control}), QStringLiteral("Quit Tulvane"));
}

} // namespace

} // namespace tulvane::test
