#include <app/AppDelegate.h>
#include <app/Migration.h>
#include <settings/AppSettings.h>

#include <utility>

namespace tulvane {

AppDelegate::AppDelegate(Neighbours neighbours) : m_with(std::move(neighbours)) {}

void AppDelegate::willFinishLaunching()
{
    Migration(m_with.defaults, m_with.dataFolder).run();
    applyActivationPolicy();
    m_with.settings.installAppearanceObserver(m_with.presentation);
}

void AppDelegate::didFinishLaunching() const
{
    m_with.launchController();
}

void AppDelegate::shouldHandleReopen() const
{
    if (m_with.bringWindowsToFront())
        return;
    if (m_with.isSetUp())
        m_with.openMainWindow();
    else
        m_with.openOnboarding();
}

void AppDelegate::willTerminate() const
{
    m_with.cancelRecording();
}

void AppDelegate::applyActivationPolicy()
{
    const ActivationPolicy wanted =
        m_with.settings.showInDock() ? ActivationPolicy::regular : ActivationPolicy::accessory;
    if (std::exchange(m_policy, wanted) == wanted)
        return;
    m_with.presentation.setActivationPolicy(wanted);
    // A desktop may send a window that changes its kind behind the others.
    m_with.bringWindowsToFront();
}

} // namespace tulvane
