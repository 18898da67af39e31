#include <base/Translate.h>
#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/indicator/HUDController.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QQuickView>
#include <QScreen>

#include <gtest/gtest.h>

namespace tulvane::test {

namespace {

/// Every window, as it is laid out at the scale of this process: QT_SCALE_FACTOR holds for a whole process,
/// so the suite is registered once for each.
class EveryWindow : public testing::TestWithParam<AppLanguage> {
protected:
    EveryWindow() { world.presentation.setReducedMotion(true); }

    void expectNoFlaws(const QString& state)
    {
        for (const SettingsTab page : allCases<SettingsTab>())
            EXPECT_EQ(flawsOf(world, page), QStringList()) << qPrintable(state + u' ' + rawValue(page));
        world.ui.showOnboarding();
        WindowProbe probe(*world.ui.onboardingWindow().window());
        QStringList flaws = probe.layoutFlaws();
        for (qreal y = 300; probe.scrollTo(y); y += 300)
            flaws += probe.layoutFlaws();
        EXPECT_EQ(flaws, QStringList()) << qPrintable(state);
    }
    /// A user who has just installed the program, on a desktop that asks before it permits anything.
    void beginAnew()
    {
        world.privacy.microphoneAccess = MicrophoneAccess::denied;
        world.privacy.accessibilityGranted = false;
        world.privacy.inputMonitoringGranted = false;
        world.permissions.refresh();
        world.settings.modifierHotkey.set(ModifierHotkey::rightOption);
        world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    }

    /// What the window shows once another one has covered and uncovered it is what a fresh drawing of it
    /// shows.
    static void expectTheSameAfterAnExpose(QQuickView& window, const QString& state)
    {
        QExposeEvent uncovered{QRegion(QRect(QPoint(), window.size()))};
        QCoreApplication::sendEvent(&window, &uncovered);
        UiWorld::settle();
        const QImage shown = window.screen()->grabWindow(window.winId()).toImage();
        ASSERT_FALSE(shown.isNull());
        const QImage drawn = window.grabWindow();
        EXPECT_EQ(shown.convertToFormat(QImage::Format_RGB32), drawn.convertToFormat(QImage::Format_RGB32))
            << qPrintable(state);
    }

    UiWorld world{GetParam()};
};

} // namespace

TEST_P(EveryWindow, HasTheScaleOfTheProcess)
{
    const qreal wanted = qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble();
    world.ui.showOnboarding();
    EXPECT_DOUBLE_EQ(world.ui.onboardingWindow().window()->effectiveDevicePixelRatio(), wanted);
}

TEST_P(EveryWindow, IsLaidOutWithoutFlawsWhereNothingIsSetUp)
{
    beginAnew();
    expectNoFlaws(QStringLiteral("empty"));
}

TEST_P(EveryWindow, IsLaidOutWithoutFlawsWhereEverythingIsThere)
{
    world.fill();
    expectNoFlaws(QStringLiteral("full"));
}

TEST_P(EveryWindow, ShowsTheSameAfterAnExpose)
{
    if (qEnvironmentVariableIsSet("QT_SCALE_FACTOR"))
        GTEST_SKIP() << "the offscreen platform grabs a scaled window in other pixels than it draws";
    beginAnew();
    for (const SettingsTab page : allCases<SettingsTab>()) {
        world.ui.showPage(page);
        QQuickView& window = *world.ui.settingsWindow().window();
        WindowProbe probe(window);
        expectTheSameAfterAnExpose(window, rawValue(page));
        probe.scrollTo(120);
        expectTheSameAfterAnExpose(window, rawValue(page) + QStringLiteral(", scrolled"));
    }
    world.ui.showOnboarding();
    QQuickView& guide = *world.ui.onboardingWindow().window();
    WindowProbe probe(guide);
    for (const int y : {0, 120, 240}) {
        probe.scrollTo(y);
        expectTheSameAfterAnExpose(guide, QStringLiteral("onboarding %1").arg(y));
    }
}

TEST_P(EveryWindow, TheIndicatorHoldsEveryNotice)
{
    HUDController& indicator = world.ui.indicator();
    for (const Phase& phase :
         {Phase{Phase::Kind::recording, {}}, Phase{Phase::Kind::transcribing, {}},
          Phase{Phase::Kind::inserting, {}}, Phase::notice(translate("Copied to clipboard")),
          Phase::notice(translate("Microphone changed – recording cancelled")),
          Phase::error(translate("The speech model has not been downloaded yet.")),
          Phase::error(translate("No microphone is available."))}) {
        indicator.setPhase(phase);
        indicator.show();
        UiWorld::settle();
        EXPECT_EQ(WindowProbe(*indicator.panel()).layoutFlaws(), QStringList()) << qPrintable(phase.text);
    }
}

// Between one line and two, and where two are cut, a layout may depend on its own result.
TEST_P(EveryWindow, TheIndicatorHoldsNoticesOfEveryLength)
{
    HUDController& indicator = world.ui.indicator();
    for (const bool still : {true, false}) {
        world.presentation.setReducedMotion(still);
        QString text;
        for (int words = 1; words <= 24; ++words) {
            text += QStringLiteral("mikrofon ");
            indicator.setPhase(Phase::notice(text.trimmed()));
            indicator.show();
            UiWorld::settle();
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Languages, EveryWindow, testing::ValuesIn(allCases<AppLanguage>()),
                         [](const auto& language) { return rawValue(language.param).toStdString(); });

} // namespace tulvane::test
