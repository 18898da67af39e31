#include <dictation/DictationSession.h>
#include <ui/viewmodels/ViewModels.h>

namespace tulvane {

ViewModels::ViewModels(const UiContext& context, SettingsSelection& selection)
    : m_context(context),
      m_selection(selection)
{
}

ViewModels::~ViewModels() = default;

MainViewModel* ViewModels::main()
{
    return made(m_main, m_selection);
}

SetupViewModel* ViewModels::setup()
{
    return made(m_setup, facts());
}

OnboardingViewModel* ViewModels::onboarding()
{
    return made(m_onboarding, facts());
}

HotkeyViewModel* ViewModels::hotkey()
{
    return made(m_hotkey);
}

PermissionWatch* ViewModels::watch()
{
    return made(m_watch);
}

HomeViewModel* ViewModels::home()
{
    return made(m_home);
}

HistoryViewModel* ViewModels::history()
{
    return made(m_history, DictationSession::mostEntries);
}

StatisticsViewModel* ViewModels::statistics()
{
    return made(m_statistics);
}

ModelGallery* ViewModels::gallery()
{
    return made(m_gallery, selectedModel());
}

ModelEntry* ViewModels::selectedModel()
{
    return made(m_selectedModel, QString());
}

PreferencesViewModel* ViewModels::preferences()
{
    return made(m_preferences);
}

PermissionsViewModel* ViewModels::permissions()
{
    return made(m_permissions);
}

} // namespace tulvane
