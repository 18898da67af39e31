#pragma once

#include <dictation/Indicator.h>
#include <ui/UiContext.h>

#include <QMetaObject>

#include <functional>
#include <memory>
#include <optional>

class QQmlEngine;

namespace tulvane {

class OnboardingWindowController;
class PhaseAnnouncer;
class HUDController;
class IndicatorPanel;
class SettingsWindowController;
class StatusItem;
class ViewModels;

/// Every window of the program, behind the narrow interface that the controller drives. Nothing is built
/// before it is first shown. Main thread; needs a QGuiApplication.
class UserInterface final : public Windows {
public:
    /// What the indicator needs, which the controller uses before anything is attached.
    struct Ground {
        std::function<std::unique_ptr<IndicatorPanel>()>
            makePanel;        ///< called when the indicator is first shown
        Scheduler& scheduler; ///< outlives this object, as the clock does
        const Clock& clock;
    };

    explicit UserInterface(const Ground& ground);
    ~UserInterface() override;

    /// What the windows show; once, before anything is shown. The context's objects outlive this one.
    void attach(const UiContext& context);
    /// Fills the status item, from now until `detach`; after `attach`. `quit` ends the program.
    void showStatusItem(StatusItem& item, std::function<void()> quit);
    /// Takes down every window and the menu, before what they show goes away.
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
    struct MenuBar;

    std::optional<UiContext> m_context;
    // Destroyed after the windows and the models, which it refers to.
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<ViewModels> m_models;
    std::unique_ptr<SettingsWindowController> m_settingsWindow;
    std::unique_ptr<OnboardingWindowController> m_onboardingWindow;
    std::unique_ptr<HUDController> m_indicator;
    std::unique_ptr<PhaseAnnouncer> m_announcer;
    std::unique_ptr<MenuBar> m_menuBar;
    QMetaObject::Connection m_arrivals; ///< of the user in one of the windows
};

} // namespace tulvane
