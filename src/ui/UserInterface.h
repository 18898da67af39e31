#pragma once

#include <dictation/Indicator.h>
#include <ui/UiContext.h>

#include <QMetaObject>

#include <functional>
#include <memory>

class QQmlEngine;

namespace tulvane {

class OnboardingWindowController;
class HUDController;
class IndicatorPanel;
class SettingsWindowController;
class ViewModels;

/// Every window of the program, behind the narrow interface that the controller drives. Nothing is built
/// before it is first shown. Main thread; needs a QGuiApplication.
class UserInterface final : public Windows {
public:
    /// What the pill, which can be asked for before anything is attached, stands on.
    struct Ground {
        std::function<std::unique_ptr<IndicatorPanel>()> makePanel; ///< asked when the pill is first shown
        Scheduler& scheduler; ///< outlives this object, as the clock does
        const Clock& clock;
    };

    explicit UserInterface(const Ground& ground);
    ~UserInterface() override;

    /// What the windows show; once, before anything is shown. The context's objects outlive this one.
    void attach(const UiContext& context);
    /// Takes down every window, before what they show goes away.
    void detach();

    void showOnboarding() override;
    void showPage(SettingsTab page) override;

    [[nodiscard]] SettingsWindowController& settingsWindow() { return *m_settingsWindow; }
    [[nodiscard]] OnboardingWindowController& onboardingWindow() { return *m_onboardingWindow; }
    [[nodiscard]] ViewModels& models() { return *m_models; }
    [[nodiscard]] HUDController& indicator() { return *m_indicator; }

    /// The windows share it; made when the first of them is built.
    [[nodiscard]] QQmlEngine& engine();

private:
    // The engine goes last: the windows and the models are its guests.
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<ViewModels> m_models;
    std::unique_ptr<SettingsWindowController> m_settingsWindow;
    std::unique_ptr<OnboardingWindowController> m_onboardingWindow;
    std::unique_ptr<HUDController> m_indicator;
    QMetaObject::Connection m_arrivals; ///< of the user in one of the windows
};

} // namespace tulvane
