#include <base/Log.h>
#include <speech/device/DeviceTrial.h>

#include <utility>

namespace tulvane {

DeviceTrial::DeviceTrial(DeviceRunner::Start start, Task task, const DeviceLimits& limits)
    : m_start(std::move(start)),
      m_task(std::move(task)),
      m_limits(limits)
{
}

TrialResult DeviceTrial::run(const ComputingDevice& device) const
{
    const TrialResult nothingLearnt{.isFit = true, .reason = {}, .isLearnt = false};
    const std::vector<float> samples = m_task.samples();
    if (samples.empty())
        return nothingLearnt;
    DeviceRunner processor(m_start, m_limits);
    processor.useProcessor();
    const auto expected = textOf(processor, samples);
    processor.unload();
    if (!expected)
        return nothingLearnt;
    DeviceRunner runner(m_start, m_limits);
    runner.use(device);
    runner.expectFirstRun(true);
    const auto text = textOf(runner, samples);
    const bool isFit = text == expected;
    qCInfo(lcWhisper).noquote() << "The trial of" << device.name << '(' << device.driver << ')'
                                << (isFit ? "passed" : "failed");
    if (isFit)
        return {.isFit = true};
    return {.isFit = false,
            .reason =
                text ? QStringLiteral("it computes something else than the processor") : runner.failureText(),
            // A driver that refuses, because its memory is taken for instance, may agree the next time.
            .isLearnt = text.has_value() || runner.hasFailed()};
}

/// What the runner writes; none, and the runner says why, where it could not.
std::optional<QString> DeviceTrial::textOf(DeviceRunner& runner, const std::vector<float>& samples) const
{
    if (!runner.load(m_task.modelFile))
        return std::nullopt;
    const auto recognised = runner.transcribe(samples, m_task.options);
    return recognised ? std::optional(recognised->text) : std::nullopt;
}

} // namespace tulvane
