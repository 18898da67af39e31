#pragma once

#include <ports/SystemMemory.h>

#include <atomic>

namespace tulvane {

/// A machine with as much memory as the test says.
class FakeSystemMemory final : public SystemMemory {
public:
    explicit FakeSystemMemory(qint64 bytes = unlimited) : m_bytes(bytes) {}

    void setAvailable(qint64 bytes) { m_bytes = bytes; }
    /// Makes reservations fail although there is enough memory, as a short address space does.
    void refuseReservations() { m_refuses = true; }

    void setResident(qint64 bytes) { m_resident = bytes; }
    [[nodiscard]] qint64 available() const override { return m_bytes; }
    [[nodiscard]] qint64 resident() const override { return m_resident; }
    [[nodiscard]] bool canReserve(qint64 /*bytes*/) const override { return !m_refuses; }

private:
    std::atomic<qint64> m_bytes;
    std::atomic<qint64> m_resident = 0;
    std::atomic<bool> m_refuses = false;
};

} // namespace tulvane
