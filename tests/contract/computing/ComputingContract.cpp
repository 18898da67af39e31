#include <platform/linux/process/PipedProcesses.h>
#include <speech/device/DeviceChoice.h>
#include <speech/device/DeviceRunner.h>
#include <support/Paths.h>
#include <support/ScratchFolder.h>
#include <support/Soak.h>
#include <support/Speech.h>
#include <support/TinyModel.h>

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

#include <array>
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

/// What the processes that this one has started hold in memory, in pages.
qint64 helpersMemory()
{
    qint64 pages = 0;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile children(tasks.filePath(task + QStringLiteral("/children")));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        for (const QByteArray& child : children.readAll().simplified().split(' ')) {
            QFile memory(QStringLiteral("/proc/%1/statm").arg(QString::fromLatin1(child)));
            if (memory.open(QIODevice::ReadOnly))
                pages += memory.readAll().split(' ').value(1).toLongLong();
        }
    }
    return pages;
}

struct Sentence {
    const char* voice;
    const char* text;
};

constexpr std::array sentences = {
    Sentence{"nb", "Hei, dette er en test."},
    Sentence{"nb", "God morgen, jeg heter Kari og bor i Bergen."},
    Sentence{"nb", "I dag er det fint vær, og vi skal gå en tur."},
    Sentence{"nb+f2", "Kan du sende rapporten i morgen?"},
    Sentence{"nb+m3", "Møtet begynner klokka ni."},
    Sentence{"nb", "Vi må kjøpe melk og brød."},
    Sentence{"nb+f3", "Toget til Oslo er forsinket."},
    Sentence{"nb", "Jeg kommer hjem i kveld."},
    Sentence{"nb+m2", "Barna leker i hagen."},
    Sentence{"nb", "Takk for hjelpen i går."},
};

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
            GTEST_SKIP() << "tools/build-gpu --for-tests has not been called";
        installHelper();
        DeviceRunner lister(start());
        const auto found = chooseDevice(lister.devices(), QStringLiteral("llvmpipe"), 0);
        if (!found)
            GTEST_SKIP() << "no driver here plays a card (mesa-vulkan-drivers)";
        software = *found;
        // With a real card's limits, which are short enough for a test.
        software.kind = DeviceKind::other;
        model = folder.write(QStringLiteral("tiny.bin"), TinyModel().bytes());
    }

    /// In a folder of its own, beside the tests' backend, since it looks for backends from its own place.
    void installHelper()
    {
        helper = folder.file(QStringLiteral("bin/tulvane-compute"));
        const QDir bin(folder.file(QStringLiteral("bin")));
        const QDir devices(bin.absoluteFilePath(QStringLiteral(TULVANE_BACKEND_FOLDER "/devices")));
        ASSERT_TRUE(bin.mkpath(QStringLiteral(".")));
        ASSERT_TRUE(bin.mkpath(devices.path()));
        ASSERT_TRUE(QFile::copy(QStringLiteral(TULVANE_COMPUTE_HELPER), helper));
        ASSERT_TRUE(QFile::link(QStringLiteral(TULVANE_GRAPHICS_BACKEND),
                                devices.filePath(QStringLiteral("libggml-vulkan.so"))));
    }
    [[nodiscard]] DeviceRunner::Start start() const
    {
        return [this] { return processes.start(helper, {}); };
    }
    [[nodiscard]] static QString textOf(DeviceRunner& runner, const std::vector<float>& samples)
    {
        const auto text = runner.transcribe(samples, {.language = QStringLiteral("no")});
        return text ? text->text : QStringLiteral("failed: ") + runner.failureText();
    }

    [[nodiscard]] QStringList onTheProcessor(const QString& modelFile,
                                             const std::vector<std::vector<float>>& takes) const
    {
        DeviceRunner runner(start(), patient);
        runner.useProcessor();
        EXPECT_TRUE(runner.load(modelFile));
        QStringList texts;
        for (const auto& samples : takes)
            texts.append(textOf(runner, samples));
        return texts;
    }

    // A driver that plays a card translates each shader for minutes on a busy machine.
    static constexpr DeviceLimits patient{.working = 900s};
    PipedProcesses processes;
    ScratchFolder folder;
    QString helper;
    ComputingDevice software;
    QString model;
};

TEST_F(ComputingContract, ADeviceWritesWhatTheProcessorWritesAgainAndAgainWithoutGrowth)
{
    const QStringList expected = onTheProcessor(model, {tone()});
    DeviceRunner device(start(), patient);
    device.use(software);
    ASSERT_TRUE(device.load(model)) << qPrintable(device.failureText());
    qint64 early = 0;
    for (int take = 1; take <= 20; ++take) {
        ASSERT_EQ(textOf(device, tone()), expected.constFirst()) << take;
        if (take == 5)
            early = helpersMemory();
    }
    ASSERT_GT(early, 0);
    EXPECT_LE(helpersMemory(), early + early / 50);
}

TEST_F(ComputingContract, TheDemoModelWritesTheSameWords)
{
    if (soakCount(0, 1) == 0)
        GTEST_SKIP() << "a sentence takes a driver that plays a card two minutes (make soak)";
    std::vector<std::vector<float>> spoken;
    for (const auto& [voice, text] : sentences)
        spoken.push_back(speakSentence(QString::fromUtf8(text), QString::fromLatin1(voice)));
    const QStringList expected = onTheProcessor(demoModelPath(), spoken);
    DeviceRunner device(start(), patient);
    device.use(software);
    ASSERT_TRUE(device.load(demoModelPath())) << qPrintable(device.failureText());
    for (std::size_t i = 0; i < spoken.size(); ++i) {
        const QString text = textOf(device, spoken[i]);
        EXPECT_EQ(text, expected.at(static_cast<qsizetype>(i)));
        EXPECT_GT(text.split(u' ').size(), 3) << "too little to compare: " << qPrintable(text);
    }
}

/// How the layer between the loader and the driver goes wrong, and whether that is while the model is loaded.
struct Failure {
    const char* plan;
    bool whileLoading;
};

class FailingDriver : public ComputingContract, public ::testing::WithParamInterface<Failure> {};

TEST_P(FailingDriver, CostsTheHelperAtMost)
{
    if (!QFile::exists(QStringLiteral(TULVANE_FAILING_LAYER "/libtulvane_failing_layer.so")))
        GTEST_SKIP() << "the Vulkan headers are missing (libvulkan-dev)";
    const Variable path("VK_LAYER_PATH", TULVANE_FAILING_LAYER);
    const Variable name("VK_INSTANCE_LAYERS", "VK_LAYER_TULVANE_failing");
    const Variable how("TULVANE_TEST_VULKAN", GetParam().plan);
    const bool hangs = QByteArrayView(GetParam().plan).startsWith("hang");
    DeviceRunner device(start(), hangs ? DeviceLimits{.working = 5s} : patient);
    device.use(software);
    EXPECT_EQ(!device.load(model), GetParam().whileLoading);
    if (!GetParam().whileLoading) {
        EXPECT_FALSE(device.transcribe(tone(), {.language = QStringLiteral("no")}));
    }
    EXPECT_FALSE(device.failureText().isEmpty());
}

// A take of this model has more than twenty submissions and less than forty; the first few copy the model.
INSTANTIATE_TEST_SUITE_P(
    Plans, FailingDriver,
    ::testing::Values(Failure{"refuse 1", true}, Failure{"memory 1", true}, Failure{"memory 3", true},
                      Failure{"lost 1", true}, Failure{"lost 5", false}, Failure{"lost 20", false},
                      Failure{"crash 1", true}, Failure{"crash 5", false}, Failure{"crash 20", false},
                      Failure{"hang 5", false}, Failure{"hang 20", false}),
    [](const auto& failure) { return QByteArray(failure.param.plan).replace(' ', "").toStdString(); });

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
