#pragma once

#include <base/Translate.h>
#include <support/ui/UiWorld.h>
#include <support/ui/WindowProbe.h>
#include <ui/viewmodels/OnboardingViewModel.h>
#include <ui/viewmodels/ViewModels.h>
#include <ui/windows/OnboardingWindowController.h>
#include <ui/windows/SettingsWindowController.h>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickView>

#include <gtest/gtest.h>

namespace tulvane::test {

/// A world in which nothing is set up.
class OnboardingTest : public testing::Test {
protected:
    explicit OnboardingTest(AppLanguage language = AppLanguage::english) : world(language)
    {
        world.privacy.microphoneAccess = MicrophoneAccess::notDetermined;
        world.privacy.accessibilityGranted = false;
        world.permissions.refresh();
        world.shortcuts.setShortcut(std::nullopt, ShortcutName::dictate());
    }

    WindowProbe& probe()
    {
        if (!m_probe) {
            world.ui.showOnboarding();
            m_probe.emplace(window());
        }
        return *m_probe;
    }
    [[nodiscard]] QQuickView& window() { return *world.ui.onboardingWindow().window(); }
    [[nodiscard]] OnboardingViewModel& guide() { return *world.ui.models().onboarding(); }
    void setMicrophone(MicrophoneAccess access)
    {
        world.privacy.microphoneAccess = access;
        world.permissions.refresh();
        UiWorld::settle();
    }
    void setAccessibility(bool granted)
    {
        world.privacy.accessibilityGranted = granted;
        world.permissions.refresh();
        UiWorld::settle();
    }
    void setCombination()
    {
        world.shortcuts.setShortcut(Shortcut{49, carbon::option}, ShortcutName::dictate());
    }
    /// Opens the step, where it is not open.
    void open(int number)
    {
        const QString line = QStringLiteral("step.%1").arg(number);
        if (!probe().item(line).property("opened").toBool())
            probe().click(line);
        EXPECT_TRUE(probe().item(line).property("opened").toBool());
    }
    [[nodiscard]] bool isOpen(const QString& step)
    {
        return probe().item(QStringLiteral("step.") + step).property("opened").toBool();
    }
    [[nodiscard]] QString state(int number)
    {
        return probe().item(QStringLiteral("step.%1.state").arg(number)).property("text").toString();
    }

    UiWorld world;

private:
    std::optional<WindowProbe> m_probe;
};

} // namespace tulvane::test
