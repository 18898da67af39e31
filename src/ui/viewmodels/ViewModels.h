#pragma once

#include <ui/UiContext.h>
#include <ui/viewmodels/DemonstrationViewModel.h>
#include <ui/viewmodels/DictationStatus.h>
#include <ui/viewmodels/HistoryViewModel.h>
#include <ui/viewmodels/HomeNotices.h>
#include <ui/viewmodels/HomeViewModel.h>
#include <ui/viewmodels/HotkeyStatus.h>
#include <ui/viewmodels/HotkeyViewModel.h>
#include <ui/viewmodels/MainViewModel.h>
#include <ui/viewmodels/MicrophoneViewModel.h>
#include <ui/viewmodels/ModelGallery.h>
#include <ui/viewmodels/OnboardingViewModel.h>
#include <ui/viewmodels/PermissionWatch.h>
#include <ui/viewmodels/PermissionsViewModel.h>
#include <ui/viewmodels/PreferencesViewModel.h>
#include <ui/viewmodels/SetupViewModel.h>
#include <ui/viewmodels/StatisticsViewModel.h>
#include <ui/viewmodels/TryOutViewModel.h>
#include <ui/viewmodels/WindowCommands.h>

#include <QObject>

#include <memory>
#include <utility>

namespace tulvane {

class Reinsertion;
class Windows;

/// What the windows' QML is given: one model for each page, made when a page first asks for it. Main thread.
class ViewModels final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(tulvane::MainViewModel* main READ main CONSTANT)
    Q_PROPERTY(tulvane::WindowCommands* commands READ commands CONSTANT)
    Q_PROPERTY(tulvane::SetupViewModel* setup READ setup CONSTANT)
    Q_PROPERTY(tulvane::OnboardingViewModel* onboarding READ onboarding CONSTANT)
    Q_PROPERTY(tulvane::DemonstrationViewModel* demonstration READ demonstration CONSTANT)
    Q_PROPERTY(tulvane::TryOutViewModel* tryOut READ tryOut CONSTANT)
    Q_PROPERTY(tulvane::MicrophoneViewModel* microphone READ microphone CONSTANT)
    Q_PROPERTY(tulvane::HotkeyViewModel* hotkey READ hotkey CONSTANT)
    Q_PROPERTY(tulvane::PermissionWatch* watch READ watch CONSTANT)
    Q_PROPERTY(tulvane::HomeViewModel* home READ home CONSTANT)
    Q_PROPERTY(tulvane::HomeNotices* notices READ notices CONSTANT)
    Q_PROPERTY(tulvane::HistoryViewModel* history READ history CONSTANT)
    Q_PROPERTY(tulvane::StatisticsViewModel* statistics READ statistics CONSTANT)
    Q_PROPERTY(tulvane::ModelGallery* gallery READ gallery CONSTANT)
    Q_PROPERTY(tulvane::ModelEntry* selectedModel READ selectedModel CONSTANT)
    Q_PROPERTY(tulvane::PreferencesViewModel* preferences READ preferences CONSTANT)
    Q_PROPERTY(tulvane::PermissionsViewModel* permissions READ permissions CONSTANT)

public:
    /// All collaborators outlive this object; `windows` opens what one page leads to from another.
    ViewModels(const UiContext& context, Windows& windows, SettingsSelection& selection);
    ~ViewModels() override;

    [[nodiscard]] MainViewModel* main();
    [[nodiscard]] WindowCommands* commands();
    [[nodiscard]] SetupViewModel* setup();
    [[nodiscard]] OnboardingViewModel* onboarding();
    [[nodiscard]] DemonstrationViewModel* demonstration();
    [[nodiscard]] TryOutViewModel* tryOut();
    [[nodiscard]] MicrophoneViewModel* microphone();
    [[nodiscard]] HotkeyViewModel* hotkey();
    [[nodiscard]] PermissionWatch* watch();
    [[nodiscard]] HomeViewModel* home();
    [[nodiscard]] HomeNotices* notices();
    [[nodiscard]] HistoryViewModel* history();
    [[nodiscard]] StatisticsViewModel* statistics();
    [[nodiscard]] ModelGallery* gallery();
    /// Stands for the model that is selected at the moment.
    [[nodiscard]] ModelEntry* selectedModel();
    [[nodiscard]] PreferencesViewModel* preferences();
    [[nodiscard]] PermissionsViewModel* permissions();
    /// What the pages share with the status item.
    [[nodiscard]] DictationStatus& status();
    [[nodiscard]] HotkeyStatus& hotkeyStatus();

private:
    /// Makes the model on first use; it is this object's child.
    template <class Model, class... Arguments>
    Model* made(Model*& model, Arguments&&... arguments)
    {
        if (!model)
            model = new Model(std::forward<Arguments>(arguments)..., this);
        return model;
    }
    [[nodiscard]] SetupFacts& facts();
    [[nodiscard]] HistoryViewModel& recent();
    [[nodiscard]] ShortcutFieldViewModel& field();
    /// The entry of the model with this identifier; without one, of the selected model.
    [[nodiscard]] ModelEntry* entryOf(const QString& id);

    UiContext m_context;
    Windows& m_windows;
    SettingsSelection& m_selection;
    DictationStatus* m_status = nullptr;
    HotkeyStatus* m_hotkeyStatus = nullptr;
    MainViewModel* m_main = nullptr;
    WindowCommands* m_commands = nullptr;
    SetupFacts* m_facts = nullptr;
    SetupViewModel* m_setup = nullptr;
    OnboardingViewModel* m_onboarding = nullptr;
    DemonstrationViewModel* m_demonstration = nullptr;
    TryOutViewModel* m_tryOut = nullptr;
    MicrophoneViewModel* m_microphone = nullptr;
    HotkeyViewModel* m_hotkey = nullptr;
    PermissionWatch* m_watch = nullptr;
    ShortcutFieldViewModel* m_field = nullptr;
    HomeViewModel* m_home = nullptr;
    HistoryViewModel* m_recent = nullptr;
    HomeNotices* m_notices = nullptr;
    HistoryViewModel* m_history = nullptr;
    std::unique_ptr<Reinsertion> m_reinsertion;
    StatisticsViewModel* m_statistics = nullptr;
    ModelGallery* m_gallery = nullptr;
    ModelEntry* m_selectedModel = nullptr;
    PreferencesViewModel* m_preferences = nullptr;
    PermissionsViewModel* m_permissions = nullptr;
};

} // namespace tulvane
