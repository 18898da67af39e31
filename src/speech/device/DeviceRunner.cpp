#include <base/Log.h>
#include <speech/device/DeviceRunner.h>

#include <utility>

namespace tulvane {

namespace {

/// What the driver said of itself, or did.
EngineObstacle deviceObstacle(const QString& text)
{
    return {.kind = EngineObstacle::Kind::library, .detail = text};
}

QString reasonOf(const EngineError& error)
{
    const QString detail = error.obstacle().detail;
    return detail.isEmpty() ? QStringLiteral("the driver failed") : detail;
}

void logLine(const helper::LogLine& line)
{
    if (line.isError)
        qCWarning(lcWhisper).noquote() << line.text;
    else
        qCDebug(lcWhisper).noquote() << line.text;
}

} // namespace

DeviceRunner::DeviceRunner(Start start, const DeviceLimits& limits)
    : m_start(std::move(start)),
      m_limits(limits)
{
}

ComputingDevices DeviceRunner::devices()
{
    const auto answer = ask(helper::ListDevices(), m_limits.listing);
    const auto* const found = answer ? std::get_if<helper::Devices>(&*answer) : nullptr;
    return found == nullptr ? ComputingDevices() : found->devices;
}

void DeviceRunner::use(const ComputingDevice& device)
{
    if (!m_loadedModel.isEmpty() && device.index != m_device.index) {
        m_helper.reset();
        m_loadedModel.clear();
    }
    m_device = device;
}

void DeviceRunner::useProcessor()
{
    use({.index = helper::processor, .name = QStringLiteral("the processor"), .kind = DeviceKind::other});
}

Recognizer::Loaded DeviceRunner::load(const QString& modelFile)
{
    if (m_loadedModel == modelFile && m_helper)
        return {};
    m_loadedModel.clear();
    const auto answer = ask(helper::Load{.modelFile = modelFile, .device = m_device.index}, workingLimit());
    if (!answer)
        return failure(EngineError::modelLoadFailed(modelFile, deviceObstacle(m_failure)));
    if (const auto* const error = std::get_if<EngineError>(&*answer)) {
        m_failure = reasonOf(*error);
        return failure(*error);
    }
    m_loadedModel = modelFile;
    return {};
}

void DeviceRunner::unload()
{
    // What a driver has taken it gives back when the process ends, and often not before.
    m_helper.reset();
    m_loadedModel.clear();
}

Recognizer::Recognised DeviceRunner::transcribe(const std::vector<float>& samples,
                                                const TranscriptionOptions& options)
{
    if (m_loadedModel.isEmpty())
        return failure(EngineError::noModelLoaded());
    const auto answer = ask(helper::Transcribe{.samples = samples, .options = options}, workingLimit());
    if (!answer)
        return failure(
            EngineError::transcriptionFailed(EngineError::deviceFailed, deviceObstacle(m_failure)));
    if (const auto* const text = std::get_if<RecognisedText>(&*answer))
        return *text;
    const auto* const error = std::get_if<EngineError>(&*answer);
    const EngineError said = error == nullptr ? EngineError::noModelLoaded() : *error;
    // After an exception nothing in the helper can be relied on.
    if (said.code() == EngineError::libraryThrew)
        giveUp(reasonOf(said));
    else
        m_failure = reasonOf(said);
    return failure(said);
}

/// The helper's answer; none when there is no helper any more, and `m_failure` says why.
std::optional<helper::Answer> DeviceRunner::ask(const helper::Request& request,
                                                std::chrono::milliseconds limit)
{
    if (!m_helper) {
        m_failure.clear();
        m_hasLostHelper = false;
        m_loadedModel.clear();
        m_helper = m_start();
    }
    if (!m_helper->send(helper::bytesOf(request), limit)) {
        giveUp(m_helper->state());
        return std::nullopt;
    }
    for (;;) {
        const auto message = m_helper->receive(limit);
        if (!message) {
            giveUp(message.error() == HelperFailure::silent
                       ? QStringLiteral("the driver gave no sign of life for %1 s").arg(limit.count() / 1000)
                       : QStringLiteral("the helper ") + m_helper->state());
            return std::nullopt;
        }
        auto answer = helper::answerOf(*message);
        if (!answer) {
            giveUp(QStringLiteral("the helper does not speak this version's language"));
            return std::nullopt;
        }
        if (const auto* const line = std::get_if<helper::LogLine>(&*answer))
            logLine(*line);
        else if (!std::holds_alternative<helper::Working>(*answer))
            return answer;
    }
}

std::chrono::milliseconds DeviceRunner::workingLimit() const
{
    if (m_device.kind == DeviceKind::software)
        return m_limits.software;
    return m_isFirstRun ? m_limits.first : m_limits.working;
}

void DeviceRunner::giveUp(const QString& reason)
{
    m_failure = reason;
    m_hasLostHelper = true;
    m_helper.reset();
    m_loadedModel.clear();
    qCWarning(lcWhisper).noquote() << "Computing on" << m_device.name << "failed:" << reason;
}

} // namespace tulvane
