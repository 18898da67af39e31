#pragma once

#include <ports/Confinement.h>

#include <memory>

namespace tulvane {

class Clock;
class GraphicsCards;
class HelperProcesses;
class RemoteControl;
class SystemMemory;
class UserDefaults;

/// What a process of the program may use that needs no sound server, no display, and no library for a bus.
/// Each service is opened when it is first asked for, and lives as long as this object. Main thread.
class LocalServices {
public:
    LocalServices() = default;
    LocalServices(const LocalServices&) = delete;
    LocalServices& operator=(const LocalServices&) = delete;
    virtual ~LocalServices() = default;

    /// The program's own domain. May outlive this object.
    [[nodiscard]] virtual std::shared_ptr<UserDefaults> defaults() = 0;
    [[nodiscard]] virtual const SystemMemory& memory() = 0;
    /// May outlive this object, as may the next.
    [[nodiscard]] virtual std::shared_ptr<const HelperProcesses> helpers() = 0;
    [[nodiscard]] virtual std::shared_ptr<const GraphicsCards> cards() = 0;
    [[nodiscard]] virtual ConfineThread confinement() = 0;
    /// A way to ask the running program, and only that, which costs next to nothing. Null where there is
    /// none: there may be another then.
    [[nodiscard]] virtual std::unique_ptr<RemoteControl> caller() = 0;
};

/// The services of the system that the program was built for. `clock` outlives them.
[[nodiscard]] std::unique_ptr<LocalServices> openLocalServices(const Clock& clock);

} // namespace tulvane
