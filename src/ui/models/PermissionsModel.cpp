#include <permissions/PermissionsService.h>
#include <ui/models/PermissionsModel.h>

namespace tulvane {

QString inWords(const PermissionObstacle& obstacle)
{
    return obstacle.remedy.isEmpty() ? obstacle.reason : obstacle.reason + u' ' + obstacle.remedy;
}

PermissionsModel::PermissionsModel(const UiContext& context, QObject* parent)
    : QObject(parent),
      m_context(context)
{
    connect(&context.permissions, &PermissionsService::microphoneChanged, this, &PermissionsModel::changed);
    connect(&context.permissions, &PermissionsService::accessibilityChanged, this,
            &PermissionsModel::changed);
}

bool PermissionsModel::microphone() const
{
    return m_context.permissions.microphone() == MicrophoneAccess::authorized;
}

bool PermissionsModel::accessibility() const
{
    return m_context.permissions.accessibility();
}

QString PermissionsModel::microphoneObstacle() const
{
    return microphone() ? QString() : inWords(m_context.permissions.obstacle(Permission::microphone));
}

QString PermissionsModel::accessibilityObstacle() const
{
    return accessibility() ? QString() : inWords(m_context.permissions.obstacle(Permission::accessibility));
}

void PermissionsModel::openMicrophoneSettings() const
{
    m_context.permissions.openSettings(PermissionsService::microphonePane);
}

void PermissionsModel::openAccessibilitySettings() const
{
    m_context.permissions.openSettings(PermissionsService::accessibilityPane);
}

void PermissionsModel::resetAccessibility() const
{
    // Asking helps also where there was nothing to forget.
    static_cast<void>(m_context.permissions.resetPermission(PermissionsService::Resettable::accessibility));
    m_context.permissions.requestAccessibility();
}

} // namespace tulvane
