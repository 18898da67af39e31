#include <base/Log.h>
#include <speech/device/SafeRunner.h>

#include <utility>

namespace tulvane {

SafeRunner::SafeRunner(Parts parts) : m_parts(std::move(parts)) {}

Recognizer::Loaded SafeRunner::load(const QString& modelFile)
{
    const bool isAskedAnew = m_request != m_parts.wanted->request();
    if (!isAskedAnew && loadedModel() == modelFile)
        return {};
    if (isAskedAnew) {
        m_request = m_parts.wanted->request();
        m_wanted = m_parts.wanted->name();
        m_isGivenUp = false;
    }
    if (takeDevice(modelFile)) {
        m_parts.processor->unload();
        return {};
    }
    const ComputingPlace place = m_place;
    if (isOnDevice())
        m_parts.device->unload();
    auto loaded = m_parts.processor->load(modelFile);
    if (loaded)
        setPlace(place);
    return loaded;
}

/// Loads the model on a device where there is a fit one; false, with the reason in `m_place`, where not.
bool SafeRunner::takeDevice(const QString& modelFile)
{
    m_place.device.clear();
    if (m_isGivenUp)
        return false;
    m_place = {};
    if (m_wanted == processorAlone || (m_wanted == anyDevice && !m_parts.hasCard())) {
        return false;
    }
    const auto chosen =
        chooseDevice(m_parts.device->devices(), m_wanted, m_parts.neededMemory(modelFile));
    if (!chosen) {
        m_place.reason = m_parts.device->hasFailed() ? m_parts.device->failureText() : chosen.error().text();
        qCInfo(lcWhisper).noquote() << "Computing on the processor:" << m_place.reason;
        m_parts.device->unload();
        return false;
    }
    if (!passesTrial(*chosen))
        return false;
    m_device = *chosen;
    m_parts.device->use(m_device);
    m_parts.device->expectFirstRun(false);
    if (const auto loaded = m_parts.device->load(modelFile); !loaded) {
        giveUp(m_parts.device->hasFailed() ? m_parts.device->failureText() : loaded.error().description());
        return false;
    }
    setPlace({.device = m_device.name, .reason = {}, .isGivenUp = false});
    return true;
}

/// Whether the device has worked here, or does so now: it must write what the processor writes.
bool SafeRunner::passesTrial(const ComputingDevice& device)
{
    if (const auto known = m_parts.record.passed(device)) {
        // Asked for by name it is tried again.
        if (*known || m_wanted == anyDevice) {
            if (!*known)
                giveUp(QStringLiteral("it failed its trial with this version of its driver"));
            return *known;
        }
    }
    const std::vector<float> samples = m_parts.trial.samples();
    if (samples.empty())
        return true;
    const auto expected = trialText(*m_parts.processor, samples);
    m_parts.processor->unload();
    // Without an answer of the processor's nothing can be learnt of the device.
    if (!expected)
        return true;
    m_parts.device->use(device);
    m_parts.device->expectFirstRun(true);
    const auto text = trialText(*m_parts.device, samples);
    const bool passed = text == expected;
    m_parts.record.keep(device, passed);
    qCInfo(lcWhisper).noquote() << "The trial of" << device.name << '(' << device.driver << ')'
                                << (passed ? "passed" : "failed");
    if (!passed)
        giveUp(m_parts.device->hasFailed() ? m_parts.device->failureText()
                                           : QStringLiteral("it computes something else than the processor"));
    return passed;
}

std::optional<QString> SafeRunner::trialText(ModelRunner& runner, const std::vector<float>& samples) const
{
    if (!runner.load(m_parts.trial.modelFile))
        return std::nullopt;
    const auto recognised = runner.transcribe(samples, m_parts.trial.options);
    return recognised ? std::optional(recognised->text) : std::nullopt;
}

void SafeRunner::unload()
{
    m_parts.device->unload();
    m_parts.processor->unload();
}

Recognizer::Recognised SafeRunner::transcribe(const std::vector<float>& samples,
                                              const TranscriptionOptions& options)
{
    if (!isOnDevice())
        return m_parts.processor->transcribe(samples, options);
    const QString model = m_parts.device->loadedModel();
    const auto recognised = m_parts.device->transcribe(samples, options);
    if (recognised)
        return recognised;
    const QString reason =
        m_parts.device->hasFailed() ? m_parts.device->failureText() : recognised.error().obstacle().detail;
    const bool isGone = m_parts.device->hasFailed();
    m_parts.device->unload();
    if (const auto loaded = m_parts.processor->load(model); !loaded)
        return failure(loaded.error());
    const auto again = m_parts.processor->transcribe(samples, options);
    // What the processor cannot do either was not the device's fault.
    if (again || isGone)
        giveUp(reason);
    setPlace(m_place);
    return again;
}

void SafeRunner::giveUp(const QString& reason)
{
    m_isGivenUp = true;
    m_parts.device->unload();
    m_place = {.device = {}, .reason = reason, .isGivenUp = true};
}

void SafeRunner::setPlace(const ComputingPlace& place)
{
    m_place = place;
    if (m_parts.onPlace)
        m_parts.onPlace(place);
}

QString SafeRunner::loadedModel() const
{
    return isOnDevice() ? m_parts.device->loadedModel() : m_parts.processor->loadedModel();
}

} // namespace tulvane
