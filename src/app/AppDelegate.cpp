#include <app/AppDelegate.h>
#include <app/program/Migration.h>
#include <settings/AppSettings.h>

#include <utility>

namespace tulvane {

AppDelegate::AppDelegate(Dependencies neighbours) : m_dependencies(std::move(neighbours)) {}

void AppDelegate::willFinishLaunching()
{
    Migration(m_dependencies.defaults, m_dependencies.dataFolder).run();
    applyActivationPolicy();
    m_dependencies.settings.installAppearanceObserver(m_dependencies.presentation);
}

void AppDelegate::didFinishLaunching() const
{
    m_dependencies.launchController();
}

void AppDelegate::shouldHandleReopen() const
{
    // What was put away into the task bar comes back with the page that it shows.
    if (m_dependencies.bringWindowsToFront() || m_dependencies.restoreMinimized())
        return;
    if (m_dependencies.isSetUp())
        m_dependencies.openMainWindow();
    else
        m_dependencies.openOnboarding();
}

void AppDelegate::willTerminate() const
{
    m_dependencies.cancelRecording();
}

void AppDelegate::applyActivationPolicy()
{
    const ActivationPolicy wanted =
        m_dependencies.settings.showInDock() ? ActivationPolicy::regular : ActivationPolicy::accessory;
    if (std::exchange(m_policy, wanted) == wanted)
        return;
    m_dependencies.presentation.setActivationPolicy(wanted);
    // A desktop may send a window that changes its kind behind the others.
    m_dependencies.bringWindowsToFront();
}

} // namespace tulvane
