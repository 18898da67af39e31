#pragma once

#include <ui/UiContext.h>

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace tulvane {

/// Has the permissions read once a second for as long as anything that shows them is on the screen: whoever
/// shows them holds it, and the last one to let go ends it. Main thread.
class PermissionWatch final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")

public:
    PermissionWatch(const UiContext& context, QObject* parent);
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
