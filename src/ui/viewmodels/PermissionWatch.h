#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

class PermissionsService;

/// Has the permissions read once a second for as long as anything that shows them is on the screen: each such
/// view holds it, and the reading ends with the last release. Main thread.
class PermissionWatch final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    /// The service outlives this object.
    PermissionWatch(PermissionsService& permissions, QObject* parent);
    ~PermissionWatch() override;

    /// The first one also reads at once, so that nothing old is shown for a second.
    Q_INVOKABLE void hold();
    /// Once for each `hold`; more often does nothing.
    Q_INVOKABLE void release();

private:
    PermissionsService& m_permissions;
    int m_holders = 0;
};

} // namespace tulvane
