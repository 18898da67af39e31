#include <speech/device/DeviceChoice.h>

#include <algorithm>
#include <optional>

namespace tulvane {

namespace {

/// The device of this name, else the first one whose name has it within.
std::optional<ComputingDevice> named(const ComputingDevices& devices, const QString& name)
{
    const auto is = [&name](const ComputingDevice& device) {
        return device.name.compare(name, Qt::CaseInsensitive) == 0;
    };
    const auto has = [&name](const ComputingDevice& device) {
        return device.name.contains(name, Qt::CaseInsensitive);
    };
    auto found = std::ranges::find_if(devices, is);
    if (found == devices.end())
        found = std::ranges::find_if(devices, has);
    return found == devices.end() ? std::nullopt : std::optional(*found);
}

bool isBetter(const ComputingDevice& one, const ComputingDevice& other)
{
    return one.kind == other.kind ? one.freeBytes > other.freeBytes : one.kind < other.kind;
}

NoDevice tooSmall(const ComputingDevice& device, qint64 neededBytes)
{
    return {.reason = NoDevice::Reason::memory,
            .device = device.name,
            .neededBytes = neededBytes,
            .availableBytes = device.freeBytes};
}

QString megabytes(qint64 bytes)
{
    return QString::number(bytes / 1'000'000);
}

} // namespace

QString NoDevice::text() const
{
    switch (reason) {
    case Reason::asked:
        return QStringLiteral("The settings ask for the processor.");
    case Reason::none:
        return QStringLiteral("No driver offers a graphics card.");
    case Reason::softwareOnly:
        return QStringLiteral("There is no graphics card, only a driver that plays one.");
    case Reason::unknown:
        return QStringLiteral("There is no device “%1”.").arg(device);
    case Reason::memory:
        return QStringLiteral("The model needs %1 MB of memory on %2, and %3 MB are left there.")
            .arg(megabytes(neededBytes), device, megabytes(availableBytes));
    }
    Q_UNREACHABLE();
}

Result<ComputingDevice, NoDevice> chooseDevice(const ComputingDevices& devices, const QString& wanted,
                                               qint64 neededBytes)
{
    using Reason = NoDevice::Reason;
    if (wanted == processorAlone)
        return failure(NoDevice{.reason = Reason::asked});
    if (wanted != anyDevice && !wanted.isEmpty()) {
        const auto device = named(devices, wanted);
        if (!device)
            return failure(NoDevice{.reason = Reason::unknown, .device = wanted});
        if (device->freeBytes < neededBytes)
            return failure(tooSmall(*device, neededBytes));
        return *device;
    }
    ComputingDevices cards;
    std::ranges::copy_if(devices, std::back_inserter(cards),
                         [](const ComputingDevice& device) { return device.kind != DeviceKind::software; });
    if (cards.isEmpty())
        return failure(NoDevice{.reason = devices.isEmpty() ? Reason::none : Reason::softwareOnly});
    std::ranges::stable_sort(cards, isBetter);
    const auto fitting = std::ranges::find_if(
        cards, [neededBytes](const ComputingDevice& device) { return device.freeBytes >= neededBytes; });
    if (fitting == cards.end())
        return failure(tooSmall(cards.constFirst(), neededBytes));
    return *fitting;
}

} // namespace tulvane
