#pragma once

#include <dictation/Indicator.h>
#include <ui/UiContext.h>

#include <memory>

class QQmlEngine;

namespace tulvane {

class OnboardingWindowController;
class SettingsWindowController;
class UiModels;

/// Every window of the program, behind the narrow interface that the controller drives. Nothing is built
/// before it is first shown. Main thread; needs a QGuiApplication.
class UserInterface final : public Windows {
public:
    UserInterface();
    ~UserInterface() override;

    /// What the windows show; once, before anything is shown. The context's objects outlive this one.
    void attach(const UiContext& context);
    /// Takes down every window, before what they show goes away.
    void detach();

    void showOnboarding() override;
    void showPage(SettingsTab page) override;

    [[nodiscard]] SettingsWindowController& settingsWindow() { return *m_settingsWindow; }
    [[nodiscard]] OnboardingWindowController& onboardingWindow() { return *m_onboardingWindow; }
    [[nodiscard]] UiModels& models() { return *m_models; }

private:
    [[nodiscard]] QQmlEngine& engine();

    // The engine goes last: the windows and the models are its guests.
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<UiModels> m_models;
    std::unique_ptr<SettingsWindowController> m_settingsWindow;
    std::unique_ptr<OnboardingWindowController> m_onboardingWindow;
};

} // namespace tulvane
