#pragma once

#include <QString>

namespace tulvane {

/// Keeps the environment from naming a library that would be loaded into the process. Main thread, before any
/// other thread reads the environment.
void ignoreBackendsOfTheEnvironment();

/// Loads the library's computing backends from one folder (absolute), and from nowhere else: the library's
/// own search would look in the current directory too. Of several processor backends the best for this
/// machine is taken. A folder that is absent or was loaded before is no error. Returns whether the library
/// can compute at all, which it can without any folder when it was built for this machine alone. Any thread,
/// one at a time.
[[nodiscard]] bool loadBackends(const QString& folder);

/// Loads one backend that computes on devices (an absolute path), and has it see only the device of this
/// index among all that the drivers offer. Returns whether the library then has one. Once in a process, and
/// only in one that a driver's crash may take along.
[[nodiscard]] bool loadDeviceBackend(const QString& library, quint32 device);

} // namespace tulvane
