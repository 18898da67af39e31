#pragma once

#include <QDBusConnection>
#include <QString>

namespace tulvane {

/// Whether the cgroup, as /proc/self/cgroup has it, is a unit of this application's own.
[[nodiscard]] bool isUnitOf(const QString& application, const QString& cgroups);

/// Has the user's service manager put this process into a unit that bears the application's id: portals go by
/// it when they ask the user, and keep the answers under it. Nothing happens where a desktop has done so
/// already, or where there is no such manager. Before the first call to a portal, which remembers what it
/// once thought of a caller. Waits for the manager, at most a second; false where it makes no unit.
bool joinAppScope(const QDBusConnection& bus, const QString& application);

} // namespace tulvane
