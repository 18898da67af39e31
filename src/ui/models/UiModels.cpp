#include <ui/models/UiModels.h>

namespace tulvane {

UiModels::UiModels(const UiContext& context, SettingsSelection& selection, Windows& windows)
    : m_context(context),
      m_selection(selection),
      m_windows(windows)
{
}

UiModels::~UiModels() = default;

MainModel* UiModels::main()
{
    return made(m_main, m_selection);
}

SetupModel* UiModels::setup()
{
    return made(m_setup, facts(), m_windows);
}

OnboardingModel* UiModels::onboarding()
{
    return made(m_onboarding, facts(), m_windows);
}

HotkeyModel* UiModels::hotkey()
{
    return made(m_hotkey);
}

PermissionWatch* UiModels::watch()
{
    return made(m_watch);
}

} // namespace tulvane
