#pragma once

#include <speech/Recognizer.h>
#include <speech/device/DeviceRunner.h>

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace tulvane {

/// How the trial of a device went.
struct TrialResult {
    bool isFit = false;
    QString reason{};     ///< why it is not fit; English
    bool isLearnt = true; ///< whether it is worth remembering
};

/// The trial of a device that has not yet worked here: it must write what the processor writes. Both compute
/// in helpers of their own.
class DeviceTrial final {
public:
    struct Task {
        QString modelFile{}; ///< a small model
        /// Something for it to recognise; empty where it cannot be read. Any thread.
        std::function<std::vector<float>()> samples{};
        TranscriptionOptions options{};
    };

    DeviceTrial(DeviceRunner::Start start, Task task, const DeviceLimits& limits = {});

    /// Blocks until it is over: up to some minutes. Any thread.
    [[nodiscard]] TrialResult run(const ComputingDevice& device) const;

private:
    [[nodiscard]] std::optional<QString> textOf(DeviceRunner& runner,
                                                const std::vector<float>& samples) const;

    DeviceRunner::Start m_start;
    Task m_task;
    DeviceLimits m_limits;
};

} // namespace tulvane
