#include <permissions/PermissionsService.h>
#include <ui/viewmodels/PermissionWatch.h>

namespace tulvane {

PermissionWatch::PermissionWatch(PermissionsService& permissions, QObject* parent)
    : QObject(parent),
      m_permissions(permissions)
{
}

PermissionWatch::~PermissionWatch()
{
    if (m_holders > 0)
        m_permissions.stopPolling();
}

void PermissionWatch::hold()
{
    if (m_holders++ > 0)
        return;
    m_permissions.refresh();
    m_permissions.startPolling();
}

void PermissionWatch::release()
{
    if (m_holders > 0 && --m_holders == 0)
        m_permissions.stopPolling();
}

} // namespace tulvane
