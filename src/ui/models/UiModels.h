#pragma once

#include <ui/UiContext.h>
#include <ui/models/HistoryModel.h>
#include <ui/models/HomeModel.h>
#include <ui/models/HotkeyModel.h>
#include <ui/models/MainModel.h>
#include <ui/models/ModelGallery.h>
#include <ui/models/OnboardingModel.h>
#include <ui/models/PermissionWatch.h>
#include <ui/models/PermissionsModel.h>
#include <ui/models/PreferencesModel.h>
#include <ui/models/SetupModel.h>
#include <ui/models/StatisticsModel.h>

#include <QObject>

namespace tulvane {

/// What the windows' QML is given: one model for each page, made when a page first asks for it. Main thread.
class UiModels final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(tulvane::MainModel* main READ main CONSTANT)
    Q_PROPERTY(tulvane::SetupModel* setup READ setup CONSTANT)
    Q_PROPERTY(tulvane::OnboardingModel* onboarding READ onboarding CONSTANT)
    Q_PROPERTY(tulvane::HotkeyModel* hotkey READ hotkey CONSTANT)
    Q_PROPERTY(tulvane::PermissionWatch* watch READ watch CONSTANT)
    Q_PROPERTY(tulvane::HomeModel* home READ home CONSTANT)
    Q_PROPERTY(tulvane::HistoryModel* history READ history CONSTANT)
    Q_PROPERTY(tulvane::StatisticsModel* statistics READ statistics CONSTANT)
    Q_PROPERTY(tulvane::ModelGallery* gallery READ gallery CONSTANT)
    Q_PROPERTY(tulvane::ModelEntry* selectedModel READ selectedModel CONSTANT)
    Q_PROPERTY(tulvane::PreferencesModel* preferences READ preferences CONSTANT)
    Q_PROPERTY(tulvane::PermissionsModel* permissions READ permissions CONSTANT)

public:
    UiModels(const UiContext& context, SettingsSelection& selection);
    ~UiModels() override;

    [[nodiscard]] MainModel* main();
    [[nodiscard]] SetupModel* setup();
    [[nodiscard]] OnboardingModel* onboarding();
    [[nodiscard]] HotkeyModel* hotkey();
    [[nodiscard]] PermissionWatch* watch();
    [[nodiscard]] HomeModel* home();
    [[nodiscard]] HistoryModel* history();
    [[nodiscard]] StatisticsModel* statistics();
    [[nodiscard]] ModelGallery* gallery();
    /// Whichever model is selected.
    [[nodiscard]] ModelEntry* selectedModel();
    [[nodiscard]] PreferencesModel* preferences();
    [[nodiscard]] PermissionsModel* permissions();

private:
    /// Makes the model on first use; it is this object's child.
    template <class Model, class... Arguments>
    Model* made(Model*& model, Arguments&&... arguments)
    {
        if (!model)
            model = new Model(m_context, std::forward<Arguments>(arguments)..., this);
        return model;
    }
    [[nodiscard]] SetupFacts& facts() { return *made(m_facts); }

    UiContext m_context;
    SettingsSelection& m_selection;
    MainModel* m_main = nullptr;
    SetupFacts* m_facts = nullptr;
    SetupModel* m_setup = nullptr;
    OnboardingModel* m_onboarding = nullptr;
    HotkeyModel* m_hotkey = nullptr;
    PermissionWatch* m_watch = nullptr;
    HomeModel* m_home = nullptr;
    HistoryModel* m_history = nullptr;
    StatisticsModel* m_statistics = nullptr;
    ModelGallery* m_gallery = nullptr;
    ModelEntry* m_selectedModel = nullptr;
    PreferencesModel* m_preferences = nullptr;
    PermissionsModel* m_permissions = nullptr;
};

} // namespace tulvane
