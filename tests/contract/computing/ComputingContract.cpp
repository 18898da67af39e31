#include <platform/linux/process/PipedProcesses.h>
#include <speech/device/DeviceChoice.h>
#include <speech/device/DeviceRunner.h>
#include <support/ScratchFolder.h>
#include <support/TinyModel.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace tulvane::test {
namespace {

using namespace std::chrono_literals;

/// Half a second of a tone.
std::vector<float> tone()
{
    std::vector<float> samples(8000);
    for (std::size_t i = 0; i < samples.size(); ++i)
        samples[i] = 0.3F * std::sin(static_cast<float>(i) * 2 * std::numbers::pi_v<float> * 440 / 16000);
    return samples;
}

/// An environment variable for the helpers to come.
class Variable final {
public:
    Variable(const char* name, const QByteArray& value) : m_name(name) { qputenv(name, value); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() { qunsetenv(m_name); }

private:
    const char* m_name;
};

class ComputingContract : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QFile::exists(QStringLiteral(TULVANE_GRAPHICS_BACKEND)))
            GTEST_SKIP() << "make gpu has not been called";
        DeviceRunner lister(start());
        const auto found = chooseDevice(lister.devices(), QStringLiteral("llvmpipe"), 0);
        if (!found)
            GTEST_SKIP() << "no driver here plays a card (mesa-vulkan-drivers)";
        software = *found;
        // With a real card's limits, which are short enough for a test.
        software.kind = DeviceKind::other;
        model = folder.write(QStringLiteral("tiny.bin"), TinyModel().bytes());
    }

    [[nodiscard]] DeviceRunner::Start start() const
    {
        return [this] { return processes.start(QStringLiteral(TULVANE_COMPUTE_HELPER), {}); };
    }
    [[nodiscard]] static QString textOf(DeviceRunner& runner)
    {
        const auto text = runner.transcribe(tone(), {.language = QStringLiteral("no")});
        return text ? text->text : QStringLiteral("failed: ") + runner.failureText();
    }

    PipedProcesses processes;
    ScratchFolder folder;
    ComputingDevice software;
    QString model;
};

TEST_F(ComputingContract, ADeviceWritesWhatTheProcessorWritesAgainAndAgain)
{
    if (!qEnvironmentVariableIsSet("TULVANE_SOAK"))
        GTEST_SKIP() << "a driver that plays a card takes minutes for a take (make soak)";
    DeviceRunner processor(start());
    processor.useProcessor();
    ASSERT_TRUE(processor.load(model));
    const QString expected = textOf(processor);
    DeviceRunner device(start(), {.working = 900s});
    device.use(software);
    ASSERT_TRUE(device.load(model)) << qPrintable(device.failureText());
    for (int take = 0; take < 20; ++take)
        ASSERT_EQ(textOf(device), expected) << take;
}

TEST_F(ComputingContract, ADriverThatFailsCostsTheHelperAtMost)
{
    if (!QFile::exists(QStringLiteral(TULVANE_FAILING_LAYER "/libtulvane_failing_layer.so")))
        GTEST_SKIP() << "the Vulkan headers are missing (libvulkan-dev)";
    const Variable path("VK_LAYER_PATH", TULVANE_FAILING_LAYER);
    const Variable name("VK_INSTANCE_LAYERS", "VK_LAYER_TULVANE_failing");
    for (const char* const plan :
         {"refuse 1", "memory 1", "memory 3", "lost 1", "lost 5", "crash 1", "crash 5", "hang 5"}) {
        const Variable how("TULVANE_TEST_VULKAN", plan);
        DeviceRunner device(start(), {.working = 5s});
        device.use(software);
        const bool failed =
            !device.load(model) || !device.transcribe(tone(), {.language = QStringLiteral("no")});
        EXPECT_TRUE(failed) << plan;
        EXPECT_FALSE(device.failureText().isEmpty()) << plan;
    }
}

TEST_F(ComputingContract, WithoutADriverThereIsNoDevice)
{
    const Variable none("VK_DRIVER_FILES", "/nonexistent.json");
    const Variable older("VK_ICD_FILENAMES", "/nonexistent.json");
    DeviceRunner lister(start());
    EXPECT_TRUE(lister.devices().isEmpty());
    EXPECT_FALSE(lister.hasFailed());
}

} // namespace
} // namespace tulvane::test
