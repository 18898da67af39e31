#pragma once

#include <platform/linux/session/MicrophoneObstacle.h>
#include <platform/linux/session/Session.h>
#include <ports/PrivacyPermissions.h>

namespace tulvane {

/// The permissions of a session in which no program can watch the keys of others. Main thread.
class UnwatchedPrivacyPermissions final : public PrivacyPermissions {
public:
    /// `reachesPrograms`: whether the session lets the program paste into others. The obstacles are asked for
    /// at each question, so that they are in the language of that moment.
    UnwatchedPrivacyPermissions(bool reachesPrograms, KeyObstacles (*obstacles)(),
                                MicrophoneDenied microphoneDenied)
        : m_reachesPrograms(reachesPrograms),
          m_obstacles(obstacles),
          m_microphoneDenied(std::move(microphoneDenied))
    {
    }

    [[nodiscard]] MicrophoneAccess microphone() const override
    {
        return m_microphoneDenied && m_microphoneDenied() ? MicrophoneAccess::denied
                                                          : MicrophoneAccess::authorized;
    }
    [[nodiscard]] bool accessibility() const override { return m_reachesPrograms; }
    [[nodiscard]] bool inputMonitoring() const override { return false; }
    [[nodiscard]] QFuture<bool> requestMicrophone() override
    {
        return QtFuture::makeReadyFuture(microphone() == MicrophoneAccess::authorized);
    }
    void requestAccessibility() override {}
    void requestInputMonitoring() override {}
    [[nodiscard]] Obstacle obstacle(Permission permission) const override
    {
        switch (permission) {
        case Permission::microphone:
            return microphone() == MicrophoneAccess::denied ? refusedMicrophone() : Obstacle{};
        case Permission::accessibility:
            return m_reachesPrograms ? Obstacle{} : m_obstacles().pasting;
        case Permission::inputMonitoring:
            return m_obstacles().watching;
        }
        Q_UNREACHABLE();
    }

private:
    bool m_reachesPrograms;
    KeyObstacles (*m_obstacles)();
    MicrophoneDenied m_microphoneDenied;
};

} // namespace tulvane
