#include "OnboardingFixture.h"

namespace tulvane::test {

namespace {

TEST_F(OnboardingTest, WhereTheDesktopAsksItsDialogComesAndNothingElse)
{
    world.privacy.asked = Permission::accessibility;
    world.privacy.obstacles[Permission::accessibility] = {QStringLiteral("The desktop asks."),
                                                          QStringLiteral("Choose Share.")};
    open(2);
    EXPECT_TRUE(probe().shows(QStringLiteral("The desktop asks. Choose Share.")));
    EXPECT_TRUE(probe().shows(QStringLiteral("Let Tulvane press keys…")));
    EXPECT_FALSE(probe().has(QStringLiteral("onboarding.resetAccessibility")));
    probe().click(QStringLiteral("onboarding.openAccessibility"));
    EXPECT_EQ(world.privacy.calls.count(QStringLiteral("requestAccessibility")), 1);
    EXPECT_TRUE(world.workspace.opened.isEmpty());
}

TEST_F(OnboardingTest, OneStepIsOpenTheDoneOnesAreLinesAndTheOthersWait)
{
    EXPECT_TRUE(isOpen(QStringLiteral("1")));
    for (const char* waiting : {"2", "3", "4", "try"})
        EXPECT_FALSE(isOpen(QString::fromLatin1(waiting))) << waiting;
    setMicrophone(MicrophoneAccess::authorized);
    EXPECT_FALSE(isOpen(QStringLiteral("1")));
    EXPECT_TRUE(probe().shows(QStringLiteral("Microphone access granted"))) << "on its line";
    EXPECT_TRUE(isOpen(QStringLiteral("2")));
    setAccessibility(true);
    EXPECT_TRUE(isOpen(QStringLiteral("3")));
    setCombination();
    EXPECT_TRUE(probe().shows(QStringLiteral("⌥Space"))) << "on its line";
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    EXPECT_TRUE(isOpen(QStringLiteral("try")));
}

TEST_F(OnboardingTest, WhatTheUserOpensStaysOpenUntilItIsDone)
{
    open(3);
    EXPECT_FALSE(isOpen(QStringLiteral("1")));
    setMicrophone(MicrophoneAccess::authorized);
    EXPECT_TRUE(isOpen(QStringLiteral("3")));
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    EXPECT_TRUE(isOpen(QStringLiteral("2"))) << "the first that is left";
    open(1);
    setAccessibility(true);
    EXPECT_TRUE(isOpen(QStringLiteral("1"))) << "it was done when the user opened it";
    probe().click(QStringLiteral("step.1"));
    EXPECT_TRUE(isOpen(QStringLiteral("4"))) << "the guide leads again";
}

TEST_F(OnboardingTest, AStepIsOpenedByTheKeyboardAndSaysThatItIsOpen)
{
    QQuickItem& line = probe().item(QStringLiteral("step.2"));
    QAccessibleInterface* const reader = QAccessible::queryAccessibleInterface(&line);
    EXPECT_EQ(reader->role(), QAccessible::Button);
    EXPECT_FALSE(reader->state().pressed);
    line.forceActiveFocus(Qt::TabFocusReason);
    probe().press(Qt::Key_Return);
    EXPECT_TRUE(reader->state().pressed);
    EXPECT_TRUE(line.hasActiveFocus());
}

TEST_F(OnboardingTest, TheDownloadIsInSightAtTheFirstStart)
{
    // As on X11, where the first two steps are done.
    setMicrophone(MicrophoneAccess::authorized);
    setAccessibility(true);
    setCombination();
    probe();
    window().resize(620, 680);
    UiWorld::settle();
    static_cast<void>(window().grabWindow());
    const QQuickItem& download = probe().item(QStringLiteral("onboarding.model.start"));
    const QQuickItem& finish = probe().item(QStringLiteral("onboarding.finish"));
    EXPECT_LT(download.mapRectToScene(QRectF(0, 0, download.width(), download.height())).bottom(),
              finish.mapToScene(QPointF(0, 0)).y() - 12);
}

TEST_F(OnboardingTest, ALowScreenShowsWhatIsOpen)
{
    setMicrophone(MicrophoneAccess::authorized);
    setAccessibility(true);
    setCombination();
    probe();
    window().setMinimumSize({});
    window().resize(620, 400);
    UiWorld::settle();
    world.installModel(world.settings.selectedModelID());
    UiWorld::settle();
    static_cast<void>(window().grabWindow());
    UiWorld::settle();
    const QQuickItem& meter = probe().item(QStringLiteral("onboarding.meter"));
    EXPECT_LT(meter.mapToScene(QPointF(0, meter.height())).y(),
              probe().item(QStringLiteral("onboarding.finish")).mapToScene(QPointF(0, 0)).y());
}

/// The guide where all that a dictation needs is there.
class TryOutTest : public OnboardingTest {
protected:
    TryOutTest()
    {
        setMicrophone(MicrophoneAccess::authorized);
        setAccessibility(true);
        setCombination();
        world.installModel(world.settings.selectedModelID());
        probe();
        window().requestActivate();
        UiWorld::settle();
    }
    [[nodiscard]] QQuickItem& field() { return probe().item(QStringLiteral("editor")); }
    [[nodiscard]] QString said()
    {
        return probe().item(QStringLiteral("onboarding.trial")).property("text").toString();
    }
};

TEST_F(TryOutTest, ItSaysWhatToDoInEitherMode)
{
    EXPECT_TRUE(probe().shows(QStringLiteral("Try it here")));
    EXPECT_TRUE(probe().shows(QStringLiteral("Press ⌥Space, say a sentence, and press it again.")));
    world.settings.hotkeyMode.set(HotkeyMode::hold);
    UiWorld::settle();
    EXPECT_TRUE(probe().shows(QStringLiteral("Hold down ⌥Space while you say a sentence.")));
    EXPECT_EQ(said(), world.microphoneTest.deviceName());
}

TEST_F(TryOutTest, ItAsksForNoHotkeyThatHasNoEffect)
{
    world.globalHotkeys.failRegistrations(HotkeyError::taken(1));
    world.shortcuts.registerAgain();
    UiWorld::settle();
    EXPECT_EQ(world.ui.models().tryOut()->hint(),
              QStringLiteral("⌥Space does not work as the hotkey. The step “Hotkey” says why."));
}

TEST_F(TryOutTest, ADictationHasTheFieldTheMeterAndItsPhases)
{
    EXPECT_FALSE(field().hasActiveFocus());
    world.controller.start();
    UiWorld::settle();
    EXPECT_TRUE(field().hasActiveFocus()) << "the words go where the keyboard is";
    EXPECT_EQ(said(), QStringLiteral("Listening…"));
    static_cast<void>(world.input.push(std::vector<float>(16000, 0.5F)));
    UiWorld::settle();
    EXPECT_GT(probe().item(QStringLiteral("onboarding.meter")).property("level").toReal(), 0.1);
    world.controller.cancel();
    UiWorld::settle();
    EXPECT_EQ(probe().item(QStringLiteral("onboarding.meter")).property("level").toReal(), 0);
    world.dictate(QStringLiteral("det virker"));
    EXPECT_EQ(said(), QStringLiteral("That is all. It works like this in every text field."));
}

TEST_F(TryOutTest, ATextThatNoKeyCouldPasteComesIntoTheFieldAllTheSame)
{
    setAccessibility(false);
    probe().click(QStringLiteral("step.try"));
    world.dictate(QStringLiteral("det virker"));
    EXPECT_EQ(field().property("text").toString(), QStringLiteral("Det virker "));
}

TEST_F(TryOutTest, AllOfItFitsOneScreen)
{
    window().resize(620, 680);
    UiWorld::settle();
    EXPECT_FALSE(probe().scrollTo(2000));
}

} // namespace

} // namespace tulvane::test
