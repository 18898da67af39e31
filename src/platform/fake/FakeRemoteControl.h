#pragma once

#include <ports/RemoteControl.h>

#include <QStringList>

#include <memory>

namespace tulvane {

/// The desktop on which several fakes meet.
struct FakeRemoteDesktop {
    RemoteControl::Answer running; ///< unset: no program runs
    const void* owner = nullptr;
    bool isReachable = true;
    QStringList phases; ///< as announced
};

/// One process's end of the remote control; those that share a desktop reach each other.
class FakeRemoteControl final : public RemoteControl {
public:
    explicit FakeRemoteControl(std::shared_ptr<FakeRemoteDesktop> desktop) : m_desktop(std::move(desktop)) {}
    ~FakeRemoteControl() override
    {
        if (m_desktop->owner != this)
            return;
        m_desktop->owner = nullptr;
        m_desktop->running = nullptr;
    }
    FakeRemoteControl(const FakeRemoteControl&) = delete;
    FakeRemoteControl& operator=(const FakeRemoteControl&) = delete;

    [[nodiscard]] Claim claim(Answer answer) override
    {
        if (!m_desktop->isReachable)
            return Claim::impossible;
        if (m_desktop->owner && m_desktop->owner != this)
            return Claim::taken;
        m_desktop->owner = this;
        m_desktop->running = std::move(answer);
        return Claim::granted;
    }
    void announcePhase(const QString& phase) override
    {
        if (m_desktop->owner == this)
            m_desktop->phases.append(phase);
    }
    [[nodiscard]] QFuture<Result<QJsonObject, RemoteError>> ask(RemoteRequest request,
                                                                const QString& argument) override
    {
        return QtFuture::makeReadyFuture(answerNow(request, argument));
    }

private:
    [[nodiscard]] Result<QJsonObject, RemoteError> answerNow(RemoteRequest request,
                                                             const QString& argument) const
    {
        if (!m_desktop->isReachable)
            return failure(RemoteError::noConnection);
        if (!m_desktop->running)
            return failure(RemoteError::notRunning);
        return m_desktop->running(request, argument);
    }

    std::shared_ptr<FakeRemoteDesktop> m_desktop;
};

} // namespace tulvane
