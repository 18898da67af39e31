#include <dictation/DictationSession.h>
#include <ui/models/UiModels.h>

namespace tulvane {

UiModels::UiModels(const UiContext& context, SettingsSelection& selection)
    : m_context(context),
      m_selection(selection)
{
}

UiModels::~UiModels() = default;

MainModel* UiModels::main()
{
    return made(m_main, m_selection);
}

SetupModel* UiModels::setup()
{
    return made(m_setup, facts());
}

OnboardingModel* UiModels::onboarding()
{
    return made(m_onboarding, facts());
}

HotkeyModel* UiModels::hotkey()
{
    return made(m_hotkey);
}

PermissionWatch* UiModels::watch()
{
    return made(m_watch);
}

HomeModel* UiModels::home()
{
    return made(m_home);
}

HistoryModel* UiModels::history()
{
    return made(m_history, DictationSession::mostEntries);
}

StatisticsModel* UiModels::statistics()
{
    return made(m_statistics);
}

ModelGallery* UiModels::gallery()
{
    return made(m_gallery, selectedModel());
}

ModelEntry* UiModels::selectedModel()
{
    return made(m_selectedModel, QString());
}

PreferencesModel* UiModels::preferences()
{
    return made(m_preferences);
}

PermissionsModel* UiModels::permissions()
{
    return made(m_permissions);
}

} // namespace tulvane
