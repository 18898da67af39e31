#pragma once

#include <ports/SystemMemory.h>

#include <QString>

namespace tulvane {

/// Memory as the Linux kernel accounts for it: /proc/meminfo, the process's resource limits, and the limits
/// of its control group and of every group above it (version 2 and version 1).
class ProcessMemory final : public SystemMemory {
public:
    /// `root` stands before every path that is read; "" is the system itself.
    explicit ProcessMemory(const QString& root = QString()) : m_root(root) {}

    [[nodiscard]] qint64 available() const override;
    [[nodiscard]] qint64 resident() const override;
    [[nodiscard]] bool canReserve(qint64 bytes) const override;

private:
    struct GroupFiles;
    static const GroupFiles version1;
    static const GroupFiles version2;

    [[nodiscard]] qint64 leftOnMachine() const;
    [[nodiscard]] qint64 leftOfProcessLimits() const;
    [[nodiscard]] qint64 leftOfGroups() const;
    [[nodiscard]] qint64 leftOfGroup(const QString& folder, const GroupFiles& files) const;
    [[nodiscard]] QByteArray contentOf(const QString& path) const;

    QString m_root;
};

} // namespace tulvane
