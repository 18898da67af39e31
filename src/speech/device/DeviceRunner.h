#pragma once

#include <ports/HelperProcess.h>
#include <speech/ModelRunner.h>
#include <speech/device/ComputingDevice.h>
#include <speech/device/HelperMessages.h>

#include <chrono>
#include <functional>

namespace tulvane {

/// How long the helper may give no sign of life.
struct DeviceLimits {
    std::chrono::milliseconds listing = std::chrono::seconds(20);
    std::chrono::milliseconds working = std::chrono::seconds(20);
    /// While a driver that has never run the shaders before translates them, and on software devices.
    std::chrono::milliseconds first = std::chrono::minutes(2);
    std::chrono::milliseconds software = std::chrono::minutes(15);
};

/// A model on a device, in the helper: a driver that crashes or hangs takes the helper along and nothing
/// else. The helper is started by the first call that needs it. After a crash, a hang or an exception of the
/// driver's it is gone, and `hasFailed` says so.
class DeviceRunner final : public ModelRunner {
public:
    using Start = std::function<std::unique_ptr<HelperProcess>()>;

    explicit DeviceRunner(Start start, const DeviceLimits& limits = {});

    /// What the drivers offer, asked anew. Empty where the helper failed, too.
    [[nodiscard]] ComputingDevices devices();
    /// What the next load uses. A helper sticks to one device, so another one means another helper.
    void use(const ComputingDevice& device);
    /// The helper's next load is for the processor, in its own process all the same.
    void useProcessor();
    /// Waits longer for signs of life: the driver has not run here before.
    void expectFirstRun(bool isFirst) { m_isFirstRun = isFirst; }

    [[nodiscard]] Recognizer::Loaded load(const QString& modelFile) override;
    void unload() override;
    [[nodiscard]] Recognizer::Recognised transcribe(const std::vector<float>& samples,
                                                    const TranscriptionOptions& options) override;
    [[nodiscard]] QString loadedModel() const override { return m_loadedModel; }

    /// What went wrong last, for the log and the user; empty where nothing did. Reset by the next start.
    [[nodiscard]] QString failureText() const { return m_failure; }
    /// Whether that cost the helper.
    [[nodiscard]] bool hasFailed() const { return m_hasLostHelper; }

private:
    [[nodiscard]] std::optional<helper::Answer> ask(const helper::Request& request,
                                                    std::chrono::milliseconds limit);
    [[nodiscard]] std::chrono::milliseconds workingLimit() const;
    void giveUp(const QString& reason);

    Start m_start;
    DeviceLimits m_limits;
    std::unique_ptr<HelperProcess> m_helper;
    ComputingDevice m_device;
    bool m_isFirstRun = false;
    QString m_loadedModel;
    QString m_failure;
    bool m_hasLostHelper = false;
};

} // namespace tulvane
