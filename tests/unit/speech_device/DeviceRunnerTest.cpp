#include "ScriptedHelpers.h"

#include <gtest/gtest.h>

namespace tulvane::test {
namespace {

using At = HelperScript::At;
using Fault = HelperScript::Fault;

const QString model = QStringLiteral("/models/a.bin");

class DeviceRunnerTest : public ::testing::Test {
protected:
    std::shared_ptr<HelperScript> script = std::make_shared<HelperScript>();
    DeviceRunner runner{startOf(script)};
};

TEST_F(DeviceRunnerTest, OneHelperLoadsAndTranscribes)
{
    ASSERT_TRUE(runner.load(model));
    ASSERT_TRUE(runner.load(model));
    EXPECT_EQ(runner.loadedModel(), model);
    const auto text = runner.transcribe({0.0F}, {});
    ASSERT_TRUE(text);
    EXPECT_EQ(text->text, script->text);
    EXPECT_EQ(script->starts, 1);
    EXPECT_EQ(script->deviceLoads, 1);
    EXPECT_FALSE(runner.hasFailed());
}

TEST_F(DeviceRunnerTest, ACrashAHangAndASilentListCostTheHelperAndSayWhy)
{
    for (const auto& [at, fault, word] :
         {std::tuple(At::load, Fault::crash, "crashed"), std::tuple(At::transcribe, Fault::crash, "crashed"),
          std::tuple(At::transcribe, Fault::hang, "no sign of life for 20 s"),
          std::tuple(At::load, Fault::hang, "no sign of life for 20 s")}) {
        script->faultAt = at;
        script->fault = fault;
        const bool isLoaded = runner.load(model).has_value();
        EXPECT_EQ(isLoaded, at == At::transcribe);
        EXPECT_FALSE(runner.transcribe({0.0F}, {}));
        EXPECT_TRUE(runner.hasFailed());
        EXPECT_TRUE(runner.failureText().contains(QLatin1String(word))) << qPrintable(runner.failureText());
        EXPECT_TRUE(runner.loadedModel().isEmpty());
    }
    script->faultAt = At::devices;
    EXPECT_TRUE(runner.devices().isEmpty());
    EXPECT_TRUE(runner.hasFailed());
}

TEST_F(DeviceRunnerTest, ARefusalLeavesTheHelperAndSaysWhatTheDriverSaid)
{
    script->faultAt = At::load;
    script->fault = Fault::refuse;
    EXPECT_FALSE(runner.load(model));
    EXPECT_FALSE(runner.hasFailed());
    EXPECT_EQ(runner.failureText(), QStringLiteral("no room"));
}

TEST_F(DeviceRunnerTest, AnotherDeviceIsAnotherHelper)
{
    ASSERT_TRUE(runner.load(model));
    ComputingDevice other;
    other.index = 3;
    runner.use(other);
    EXPECT_TRUE(runner.loadedModel().isEmpty());
    ASSERT_TRUE(runner.load(model));
    EXPECT_EQ(script->starts, 2);
}

} // namespace
} // namespace tulvane::test
