#include "ScriptedHelpers.h"

#include <speech/device/SafeRunner.h>
#include <support/ScratchFolder.h>

#include <gtest/gtest.h>

#include <future>

namespace tulvane::test {
namespace {

using At = HelperScript::At;
using Fault = HelperScript::Fault;
using namespace std::chrono_literals;

const QString model = QStringLiteral("/models/a.bin");
const ComputingDevice card{.index = 0,
                           .name = QStringLiteral("Card"),
                           .kind = DeviceKind::discrete,
                           .driver = QStringLiteral("driver 1"),
                           .totalBytes = 8'000'000'000,
                           .freeBytes = 8'000'000'000};

/// The processor in this process.
class ProcessorRunner final : public ModelRunner {
public:
    [[nodiscard]] Recognizer::Loaded load(const QString& file) override
    {
        m_model = file;
        return {};
    }
    void unload() override { m_model.clear(); }
    [[nodiscard]] Recognizer::Recognised transcribe(const std::vector<float>& /*samples*/,
                                                    const TranscriptionOptions& /*options*/) override
    {
        if (m_model.isEmpty())
            return failure(EngineError::noModelLoaded());
        return RecognisedText{.text = QStringLiteral("By the processor."), .language = QStringLiteral("no")};
    }
    [[nodiscard]] QString loadedModel() const override { return m_model; }

private:
    QString m_model;
};

class SafeRunnerTest : public ::testing::Test {
protected:
    SafeRunnerTest() { script->devices = {card}; }

    SafeRunner& runner()
    {
        if (!m_runner)
            m_runner = std::make_unique<SafeRunner>(SafeRunner::Parts{
                .processor = std::make_unique<ProcessorRunner>(),
                .device = std::make_unique<DeviceRunner>(startOf(script)),
                .wanted = wanted,
                .neededMemory = [this](const QString&) { return needed; },
                .hasCard = [this] { return hasCard; },
                .trial = std::make_shared<const DeviceTrial>(
                    startOf(script), DeviceTrial::Task{.modelFile = QStringLiteral("/demo.bin"),
                                                       .samples = [] { return std::vector<float>(16, 0.0F); },
                                                       .options = {}}),
                .waitsForTrial = waits,
                .record = record,
                .onPlace = [this](const ComputingPlace& place) { places.push_back(place); }});
        return *m_runner;
    }
    QString takeText()
    {
        const auto text = runner().transcribe({0.0F}, {});
        return text ? text->text : QString();
    }
    [[nodiscard]] QString reason() const { return places.empty() ? QString() : places.back().reason; }

    std::shared_ptr<HelperScript> script = std::make_shared<HelperScript>();
    std::shared_ptr<WantedDevice> wanted = std::make_shared<WantedDevice>(QStringLiteral("auto"));
    ScratchFolder folder;
    TrialRecord record{folder.file(QStringLiteral("record.json")), QStringLiteral("1.0")};
    std::vector<ComputingPlace> places;
    qint64 needed = 1'000'000;
    bool hasCard = true;
    bool waits = true;

private:
    std::unique_ptr<SafeRunner> m_runner;
};

TEST_F(SafeRunnerTest, ADeviceThatPassesItsTrialComputesAndIsRemembered)
{
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(places.back().device, card.name);
    EXPECT_EQ(takeText(), script->text);
    EXPECT_EQ(record.passed(card), true);
    EXPECT_EQ(script->processorLoads, 1);
    EXPECT_EQ(runner().loadedModel(), model);
}

TEST_F(SafeRunnerTest, ARememberedDeviceIsNotTriedAgain)
{
    record.keep(card, true);
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(script->processorLoads, 0);
    EXPECT_EQ(script->deviceLoads, 1);
}

TEST_F(SafeRunnerTest, WithoutACardOrWithTheProcessorWantedNoDriverIsAsked)
{
    hasCard = false;
    ASSERT_TRUE(runner().load(model));
    wanted->set(QStringLiteral("cpu"));
    hasCard = true;
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(script->starts, 0);
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
    EXPECT_TRUE(places.back().device.isEmpty());
    EXPECT_FALSE(places.back().isGivenUp);
}

TEST_F(SafeRunnerTest, TheTrialStandsInNobodysWay)
{
    waits = false;
    std::promise<void> release;
    const std::shared_future<void> released = release.get_future().share();
    script->beforeLoad = [released] { released.wait(); };
    ASSERT_TRUE(runner().load(model));
    EXPECT_TRUE(places.back().device.isEmpty());
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(runner().loadedModel(), model);
    release.set_value();
    // What holds the model is chosen anew once the trial is over.
    for (int i = 0; i < 500 && !runner().loadedModel().isEmpty(); ++i)
        std::this_thread::sleep_for(10ms);
    ASSERT_TRUE(runner().loadedModel().isEmpty());
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(places.back().device, card.name);
    EXPECT_EQ(takeText(), script->text);
}

TEST_F(SafeRunnerTest, ATrialThatFailsIsRememberedAndSaidOnce)
{
    script->faultAt = At::transcribe;
    script->fault = Fault::wrongText;
    ASSERT_TRUE(runner().load(model));
    EXPECT_TRUE(places.back().isGivenUp);
    EXPECT_EQ(reason(), QStringLiteral("it computes something else than the processor"));
    EXPECT_EQ(record.passed(card), false);
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
    // Asked for again, and known by now.
    wanted->set(QStringLiteral("auto"));
    ASSERT_TRUE(runner().load(model));
    EXPECT_FALSE(places.back().isGivenUp);
    EXPECT_FALSE(reason().isEmpty());
    // By its name it is tried again.
    script->faultAt = At::never;
    wanted->set(card.name);
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(places.back().device, card.name);
    EXPECT_EQ(record.passed(card), true);
}

TEST_F(SafeRunnerTest, ATrialThatTheDriverRefusesSaysWhatTheDriverSaid)
{
    script->faultAt = At::load;
    script->fault = Fault::refuse;
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(reason(), QStringLiteral("no room"));
    // It may have room the next time.
    EXPECT_EQ(record.passed(card), std::nullopt);
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
}

class FaultsWhileDecoding : public SafeRunnerTest, public ::testing::WithParamInterface<Fault> {};

TEST_P(FaultsWhileDecoding, CostNoWordsAndAreSaidOnce)
{
    record.keep(card, true);
    ASSERT_TRUE(runner().load(model));
    script->faultAt = At::transcribe;
    script->fault = GetParam();
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
    EXPECT_TRUE(places.back().isGivenUp);
    EXPECT_FALSE(reason().isEmpty());
    const int takes = script->takes;
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
    ASSERT_TRUE(runner().load(model));
    ASSERT_TRUE(runner().load(QStringLiteral("/models/b.bin")));
    EXPECT_EQ(script->takes, takes);
    EXPECT_TRUE(places.back().device.isEmpty());
    // Until the user asks for it.
    script->faultAt = At::never;
    wanted->set(QStringLiteral("auto"));
    EXPECT_TRUE(runner().loadedModel().isEmpty());
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(takeText(), script->text);
}

INSTANTIATE_TEST_SUITE_P(Kinds, FaultsWhileDecoding,
                         ::testing::Values(Fault::crash, Fault::hang, Fault::refuse));

class FaultsWhileLoading : public SafeRunnerTest, public ::testing::WithParamInterface<Fault> {};

TEST_P(FaultsWhileLoading, LeaveTheModelToTheProcessor)
{
    record.keep(card, true);
    script->faultAt = At::load;
    script->fault = GetParam();
    ASSERT_TRUE(runner().load(model));
    EXPECT_TRUE(places.back().isGivenUp);
    EXPECT_EQ(takeText(), QStringLiteral("By the processor."));
    EXPECT_EQ(runner().loadedModel(), model);
}

INSTANTIATE_TEST_SUITE_P(Kinds, FaultsWhileLoading,
                         ::testing::Values(Fault::crash, Fault::hang, Fault::refuse));

TEST_F(SafeRunnerTest, ACardThatIsGoneOrFullIsNoFailure)
{
    needed = 9'000'000'000;
    ASSERT_TRUE(runner().load(model));
    EXPECT_FALSE(places.back().isGivenUp);
    EXPECT_FALSE(reason().isEmpty());
    script->devices = {};
    ASSERT_TRUE(runner().load(QStringLiteral("/models/b.bin")));
    EXPECT_FALSE(places.back().isGivenUp);
    // It comes back.
    needed = 1;
    script->devices = {card};
    ASSERT_TRUE(runner().load(model));
    EXPECT_EQ(places.back().device, card.name);
}

} // namespace
} // namespace tulvane::test
