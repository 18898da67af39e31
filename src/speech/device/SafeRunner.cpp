#include <base/Log.h>
#include <speech/device/SafeRunner.h>

#include <utility>

namespace tulvane {

SafeRunner::SafeRunner(Parts parts) : m_parts(std::move(parts)) {}

Recognizer::Loaded SafeRunner::load(const QString& modelFile)
{
    const bool isAskedAnew = m_request != m_parts.wanted->request();
    const bool wasTried = isTrialOver();
    if (!isAskedAnew && !wasTried && heldModel() == modelFile)
        return {};
    if (wasTried)
        concludeTrial();
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
    // One helper at a time is enough for a driver.
    if (m_trial.valid())
        return false;
    m_place = {};
    if (m_wanted == processorAlone || (m_wanted == anyDevice && !m_parts.hasCard()))
        return false;
    const auto chosen = chooseDevice(m_parts.device->devices(), m_wanted, m_parts.neededMemory(modelFile));
    if (!chosen) {
        m_place.reason = m_parts.device->hasFailed() ? m_parts.device->failureText() : chosen.error().text();
        qCInfo(lcWhisper).noquote() << "Computing on the processor:" << m_place.reason;
        m_parts.device->unload();
        return false;
    }
    if (!isTried(*chosen))
        return false;
    m_device = *chosen;
    m_parts.device->use(m_device);
    m_parts.device->expectFirstRun(false);
    if (const auto loaded = m_parts.device->load(modelFile); !loaded) {
        giveUp(m_parts.device->failureText());
        return false;
    }
    setPlace({.device = m_device.name, .reason = {}, .isGivenUp = false});
    return true;
}

/// Whether the device has worked here, or does so now. Where it is still being tried, `m_place` says so.
bool SafeRunner::isTried(const ComputingDevice& device)
{
    const auto known = m_parts.record.passed(device);
    if (known == true || m_unlearnt == device.name)
        return true;
    // Asked for by name it is tried again.
    if (known && m_wanted == anyDevice) {
        // The user learnt of it when it failed.
        m_isGivenUp = true;
        m_place.reason = QStringLiteral("it failed its trial with this version of its driver");
        return false;
    }
    m_parts.device->unload();
    m_device = device;
    const auto policy = m_parts.waitsForTrial ? std::launch::deferred : std::launch::async;
    m_trial = std::async(policy, [trial = m_parts.trial, device] { return trial->run(device); });
    if (!m_parts.waitsForTrial) {
        m_place.reason = QStringLiteral("%1 is being tried").arg(device.name);
        return false;
    }
    concludeTrial();
    return !m_isGivenUp;
}

bool SafeRunner::isTrialOver() const
{
    return m_trial.valid() && m_trial.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

/// Takes the trial's result, and waits for it where it must be.
void SafeRunner::concludeTrial()
{
    const TrialResult result = m_trial.get();
    if (result.isLearnt)
        m_parts.record.keep(m_device, result.isFit);
    else if (result.isFit)
        m_unlearnt = m_device.name;
    if (!result.isFit)
        giveUp(result.reason);
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
    const QString reason = m_parts.device->failureText();
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
    if (isTrialOver() || m_request != m_parts.wanted->request())
        return {};
    return heldModel();
}

QString SafeRunner::heldModel() const
{
    return isOnDevice() ? m_parts.device->loadedModel() : m_parts.processor->loadedModel();
}

} // namespace tulvane
