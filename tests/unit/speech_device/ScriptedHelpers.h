#pragma once

#include <ports/HelperProcess.h>
#include <speech/device/DeviceRunner.h>
#include <speech/device/HelperMessages.h>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

namespace tulvane::test {

/// What scripted helpers do, and what they were asked, counted over all of them. Any thread.
struct HelperScript {
    enum class At { never, devices, load, transcribe };
    enum class Fault { crash, hang, refuse, wrongText };

    ComputingDevices devices{};
    At faultAt = At::never;
    Fault fault = Fault::crash;
    QString text = QStringLiteral("Hei.");
    int starts = 0;
    int deviceLoads = 0;
    int processorLoads = 0;
    int takes = 0; ///< on a device
    /// Called by a load on a device, before it answers.
    std::function<void()> beforeLoad = [] {};
    std::mutex mutex{};
};

/// A helper that answers as the script says.
class ScriptedHelper final : public HelperProcess {
public:
    explicit ScriptedHelper(std::shared_ptr<HelperScript> script) : m_script(std::move(script)) {}

    [[nodiscard]] bool send(const QByteArray& message, std::chrono::milliseconds /*limit*/) override
    {
        const auto request = helper::requestOf(message);
        if (!request || m_isGone)
            return false;
        if (const auto* const load = std::get_if<helper::Load>(&*request))
            beginLoad(*load);
        const std::lock_guard lock(m_script->mutex);
        answer(*request);
        return true;
    }

    [[nodiscard]] Result<QByteArray, HelperFailure> receive(std::chrono::milliseconds /*limit*/) override
    {
        if (!m_answers.empty()) {
            const QByteArray answer = m_answers.front();
            m_answers.erase(m_answers.begin());
            return answer;
        }
        return failure(m_isGone ? HelperFailure::ended : HelperFailure::silent);
    }

    [[nodiscard]] QString state() const override
    {
        return m_isGone ? QStringLiteral("crashed") : QStringLiteral("runs");
    }

private:
    using At = HelperScript::At;
    using Fault = HelperScript::Fault;

    void say(const helper::Answer& answer) { m_answers.push_back(helper::bytesOf(answer)); }

    void beginLoad(const helper::Load& load)
    {
        m_isProcessor = load.device == helper::processor;
        if (!m_isProcessor)
            m_script->beforeLoad();
    }

    /// Whether it ends here, because the script says so.
    bool fails(At at)
    {
        if (m_isProcessor || m_script->faultAt != at || m_script->fault == Fault::wrongText)
            return false;
        if (m_script->fault == Fault::refuse)
            say(EngineError::modelLoadFailed(QStringLiteral("m"), {.kind = EngineObstacle::Kind::library,
                                                                   .detail = QStringLiteral("no room")}));
        m_isGone = m_script->fault == Fault::crash;
        return true;
    }

    void answer(const helper::Request& request)
    {
        if (std::holds_alternative<helper::ListDevices>(request)) {
            if (!fails(At::devices))
                say(helper::Devices{m_script->devices});
        } else if (std::holds_alternative<helper::Load>(request)) {
            ++(m_isProcessor ? m_script->processorLoads : m_script->deviceLoads);
            if (!fails(At::load))
                say(helper::Done());
        } else if (std::holds_alternative<helper::Transcribe>(request)) {
            m_script->takes += m_isProcessor ? 0 : 1;
            say(helper::Working());
            say(helper::LogLine{.isError = false, .text = QStringLiteral("a line")});
            if (!fails(At::transcribe))
                say(RecognisedText{.text = textHere(), .language = QStringLiteral("no")});
        } else {
            say(helper::Done());
        }
    }

    [[nodiscard]] QString textHere() const
    {
        const bool isWrong = !m_isProcessor && m_script->faultAt == At::transcribe;
        return isWrong ? QStringLiteral("Something else.") : m_script->text;
    }

    std::shared_ptr<HelperScript> m_script;
    std::vector<QByteArray> m_answers;
    bool m_isProcessor = false;
    bool m_isGone = false;
};

inline DeviceRunner::Start startOf(const std::shared_ptr<HelperScript>& script)
{
    return [script]() -> std::unique_ptr<HelperProcess> {
        const std::lock_guard lock(script->mutex);
        ++script->starts;
        return std::make_unique<ScriptedHelper>(script);
    };
}

} // namespace tulvane::test
