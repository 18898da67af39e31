#pragma once

#include <speech/device/ComputingDevice.h>

#include <QString>

#include <optional>

namespace tulvane {

/// How the trials of this machine's devices went, kept in a file, so that each is made once: for a device
/// with this version of its driver and of the program. One thread.
class TrialRecord final {
public:
    /// `file` need not exist; its folder is made when something is kept. An empty name keeps nothing.
    TrialRecord(QString file, QString programVersion);

    /// Whether the device passed; none where it has not been tried.
    [[nodiscard]] std::optional<bool> passed(const ComputingDevice& device) const;
    /// Keeps it, and forgets what is known of other versions of the same device's driver. A file that cannot
    /// be written is a trial more at the next start.
    void keep(const ComputingDevice& device, bool hasPassed) const;

private:
    [[nodiscard]] QString versions(const ComputingDevice& device) const;

    QString m_file;
    QString m_programVersion;
};

} // namespace tulvane
