#include <permissions/PermissionsService.h>
#include <ui/viewmodels/PermissionsViewModel.h>

namespace tulvane {

QString inWords(const Obstacle& obstacle)
{
    return obstacle.remedy.isEmpty() ? obstacle.reason : obstacle.reason + u' ' + obstacle.remedy;
}

PermissionsViewModel::PermissionsViewModel(PermissionsService& permissions, QObject* parent)
    : QObject(parent),
      m_permissions(permissions)
{
    connect(&permissions, &PermissionsService::microphoneChanged, this, &PermissionsViewModel::changed);
    connect(&permissions, &PermissionsService::accessibilityChanged, this, &PermissionsViewModel::changed);
}

bool PermissionsViewModel::microphone() const
{
    return m_permissions.microphone() == MicrophoneAccess::authorized;
}

bool PermissionsViewModel::accessibility() const
{
    return m_permissions.accessibility();
}

QString PermissionsViewModel::microphoneObstacle() const
{
    return microphone() ? QString() : inWords(m_permissions.obstacle(Permission::microphone));
}

QString PermissionsViewModel::accessibilityObstacle() const
{
    return accessibility() ? QString() : inWords(m_permissions.obstacle(Permission::accessibility));
}

bool PermissionsViewModel::accessibilityIsAsked() const
{
    return m_permissions.asksForAccessibility();
}

void PermissionsViewModel::askForAccessibility() const
{
    m_permissions.requestAccessibility();
}

void PermissionsViewModel::openMicrophoneSettings() const
{
    m_permissions.openSettings(PermissionsService::microphonePane);
}

void PermissionsViewModel::openAccessibilitySettings() const
{
    m_permissions.openSettings(PermissionsService::accessibilityPane);
}

void PermissionsViewModel::resetAccessibility() const
{
    // Asking helps also where there was nothing to forget.
    static_cast<void>(m_permissions.resetPermission(PermissionsService::Resettable::accessibility));
    m_permissions.requestAccessibility();
}

} // namespace tulvane
