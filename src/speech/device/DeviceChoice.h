#pragma once

#include <base/Result.h>
#include <speech/device/ComputingDevice.h>

#include <QString>

namespace tulvane {

/// What the user may write instead of a device's name.
inline constexpr QStringView anyDevice = u"auto";
inline constexpr QStringView processorAlone = u"cpu";

/// Why nothing but the processor is to compute.
struct NoDevice {
    enum class Reason {
        asked,        ///< the user wants the processor
        none,         ///< no driver offers anything
        softwareOnly, ///< what there is would be slower than the processor
        unknown,      ///< nothing has the name that the user wants
        memory,       ///< none has enough memory left for the model
    };
    Reason reason = Reason::none;
    QString device{};          ///< `unknown`: the wanted name; `memory`: the best one that is too small
    qint64 neededBytes = 0;    ///< `memory`
    qint64 availableBytes = 0; ///< `memory`

    [[nodiscard]] friend bool operator==(const NoDevice&, const NoDevice&) = default;
    /// One English sentence, for the log and the command line.
    [[nodiscard]] QString text() const;
};

/// Which device is to run a model. `wanted` is "auto", "cpu" or a name (a part of one will do, in capitals or
/// not). Without a name: a card before what is built into the processor, of several the one with the most
/// memory left, and never software. A device has to have `neededBytes` left, however it was chosen.
[[nodiscard]] Result<ComputingDevice, NoDevice> chooseDevice(const ComputingDevices& devices,
                                                             const QString& wanted, qint64 neededBytes);

} // namespace tulvane
