#pragma once

#include <QtGlobal>

#include <limits>

namespace tulvane {

/// What memory the system still has to give to this process. Safe to call from any thread; never fails: where
/// the system tells nothing, there is `unlimited`.
class SystemMemory {
public:
    static constexpr qint64 unlimited = std::numeric_limits<qint64>::max();

    SystemMemory() = default;
    SystemMemory(const SystemMemory&) = delete;
    SystemMemory& operator=(const SystemMemory&) = delete;
    virtual ~SystemMemory() = default;

    /// Bytes that this process could take now without being refused or killed: the least of what the machine
    /// has free or can free up, what the process's own limits leave, and what its group's limits leave.
    [[nodiscard]] virtual qint64 available() const = 0;

    /// Bytes of the machine's memory that this process holds now; 0 where the system does not say.
    [[nodiscard]] virtual qint64 resident() const = 0;

    /// Whether so many bytes could be had in one piece right now, asked of the system itself by reserving and
    /// giving back. Takes no memory.
    [[nodiscard]] virtual bool canReserve(qint64 bytes) const = 0;
};

} // namespace tulvane
