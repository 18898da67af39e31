#include <speech/device/DeviceChoice.h>

#include <gtest/gtest.h>

namespace tulvane {
namespace {

constexpr qint64 giga = 1'000'000'000;

ComputingDevice device(quint32 index, const char* name, DeviceKind kind, qint64 freeBytes)
{
    return {.index = index,
            .name = QString::fromLatin1(name),
            .kind = kind,
            .driver = QStringLiteral("driver 1"),
            .totalBytes = 16 * giga,
            .freeBytes = freeBytes};
}

const ComputingDevice software = device(0, "llvmpipe (LLVM 15)", DeviceKind::software, 30 * giga);
const ComputingDevice integrated = device(1, "Intel UHD Graphics", DeviceKind::integrated, 12 * giga);
const ComputingDevice small = device(2, "Radeon Pro", DeviceKind::discrete, giga);
const ComputingDevice large = device(3, "GeForce RTX 4070", DeviceKind::discrete, 9 * giga);
const ComputingDevices all{software, integrated, small, large};

QString chosen(const ComputingDevices& devices, const QString& wanted = QStringLiteral("auto"),
               qint64 needed = 0)
{
    const auto found = chooseDevice(devices, wanted, needed);
    return found ? found->name : QString();
}

NoDevice::Reason reason(const ComputingDevices& devices, const QString& wanted, qint64 needed)
{
    const auto found = chooseDevice(devices, wanted, needed);
    EXPECT_FALSE(found);
    EXPECT_FALSE(found.error().text().isEmpty());
    return found.error().reason;
}

TEST(DeviceChoice, ACardComesBeforeWhatIsBuiltInAndTheRoomierOneFirst)
{
    EXPECT_EQ(chosen(all), large.name);
    EXPECT_EQ(chosen({software, integrated, small}), small.name);
    EXPECT_EQ(chosen({software, integrated}), integrated.name);
}

TEST(DeviceChoice, TheNextOneWithRoomForTheModelIsTaken)
{
    EXPECT_EQ(chosen({integrated, small}, QStringLiteral("auto"), 2 * giga), integrated.name);
    EXPECT_EQ(reason({small}, QStringLiteral("auto"), 2 * giga), NoDevice::Reason::memory);
    EXPECT_EQ(reason({small}, QStringLiteral("radeon"), 2 * giga), NoDevice::Reason::memory);
}

TEST(DeviceChoice, SoftwareIsTakenOnlyByItsName)
{
    EXPECT_EQ(reason({software}, QStringLiteral("auto"), 0), NoDevice::Reason::softwareOnly);
    EXPECT_EQ(chosen(all, QStringLiteral("llvmpipe")), software.name);
}

TEST(DeviceChoice, APartOfANameWillDoAndTheWholeNameComesFirst)
{
    const ComputingDevice second = device(4, "GeForce RTX 4070 (2)", DeviceKind::discrete, 9 * giga);
    EXPECT_EQ(chosen({second, large}, QStringLiteral("geforce rtx 4070")), large.name);
    EXPECT_EQ(chosen({second, large}, QStringLiteral("(2)")), second.name);
    EXPECT_EQ(reason(all, QStringLiteral("Arc"), 0), NoDevice::Reason::unknown);
}

TEST(DeviceChoice, TheProcessorAloneAndNothingAtAll)
{
    EXPECT_EQ(reason(all, QStringLiteral("cpu"), 0), NoDevice::Reason::asked);
    EXPECT_EQ(reason({}, QStringLiteral("auto"), 0), NoDevice::Reason::none);
}

} // namespace
} // namespace tulvane
