#pragma once

#include <speech/ModelRunner.h>
#include <speech/device/DeviceChoice.h>
#include <speech/device/DeviceRunner.h>
#include <speech/device/DeviceTrial.h>
#include <speech/device/TrialRecord.h>

#include <functional>
#include <future>
#include <memory>
#include <mutex>

namespace tulvane {

/// Where a model runs, for people.
struct ComputingPlace {
    QString device; ///< the device's name; empty for the processor
    QString
        reason; ///< why not on a device, where one was wanted; English, empty where there is nothing to say
    bool isGivenUp = false; ///< a device was used or tried, and failed
};

/// What the user wants to compute with, set on one thread and read on another. Writing it, the same again
/// included, also asks for a device that was given up.
class WantedDevice final {
public:
    explicit WantedDevice(QString name) : m_name(std::move(name)) {}

    void set(const QString& name)
    {
        const std::lock_guard lock(m_mutex);
        m_name = name;
        ++m_request;
    }
    [[nodiscard]] QString name() const
    {
        const std::lock_guard lock(m_mutex);
        return m_name;
    }
    /// Another number after each `set`.
    [[nodiscard]] int request() const
    {
        const std::lock_guard lock(m_mutex);
        return m_request;
    }

private:
    mutable std::mutex m_mutex;
    QString m_name;
    int m_request = 0;
};

/// A model on the best device, and never worse than on the processor alone: whatever fails on the device is
/// done again by the processor with the same audio, and the device is then left alone until the user asks for
/// it again. A device that has not yet worked here, with its driver as it is, is tried first; meanwhile the
/// processor computes, and the first load after a trial that went well takes the device.
class SafeRunner final : public ModelRunner {
public:
    struct Parts {
        std::unique_ptr<ModelRunner> processor;
        std::unique_ptr<DeviceRunner> device;
        std::shared_ptr<const WantedDevice> wanted;
        /// Bytes that a model takes on a device.
        std::function<qint64(const QString& modelFile)> neededMemory;
        /// Whether there is any sign of a graphics card. Where there is none the drivers are not even asked,
        /// unless the user names a device.
        std::function<bool()> hasCard;
        std::shared_ptr<const DeviceTrial> trial;
        /// A load that needs a trial waits for it, which is for a process that runs once and ends.
        bool waitsForTrial = false;
        TrialRecord record;
        /// Receives each place where a model has been loaded, on the runner's thread.
        std::function<void(const ComputingPlace&)> onPlace;
    };

    explicit SafeRunner(Parts parts);

    [[nodiscard]] Recognizer::Loaded load(const QString& modelFile) override;
    void unload() override;
    [[nodiscard]] Recognizer::Recognised transcribe(const std::vector<float>& samples,
                                                    const TranscriptionOptions& options) override;
    /// Empty, too, while where the model is to run has to be chosen anew: by the next load.
    [[nodiscard]] QString loadedModel() const override;

private:
    [[nodiscard]] bool isOnDevice() const { return !m_parts.device->loadedModel().isEmpty(); }
    [[nodiscard]] bool takeDevice(const QString& modelFile);
    [[nodiscard]] bool isTried(const ComputingDevice& device);
    void concludeTrial();
    [[nodiscard]] QString heldModel() const;
    [[nodiscard]] bool isTrialOver() const;
    void giveUp(const QString& reason);
    void setPlace(const ComputingPlace& place);

    Parts m_parts;
    QString m_wanted;
    int m_request = -1; ///< the user's request that `m_place` answers
    bool m_isGivenUp = false;
    ComputingDevice m_device;
    ComputingPlace m_place;
    QString m_unlearnt; ///< the device of which a trial has taught nothing, and that is used all the same
    std::future<TrialResult> m_trial; ///< of `m_device`, while it runs and until its result is taken
};

} // namespace tulvane
