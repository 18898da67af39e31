#pragma once

#include <platform/linux/session/MicrophoneObstacle.h>
#include <platform/linux/session/Session.h>
#include <ports/PrivacyPermissions.h>

namespace tulvane {

/// The permissions of a session in which keys can be neither posted nor watched. Main thread.
class NullPrivacyPermissions final : public PrivacyPermissions {
public:
    /// The obstacles are asked for at each question, so that they are in the language of that moment.
    NullPrivacyPermissions(KeyObstacles (*obstacles)(), MicrophoneDenied microphoneDenied)
        : m_obstacles(obstacles),
          m_microphoneDenied(std::move(microphoneDenied))
    {
    }

    [[nodiscard]] MicrophoneAccess microphone() const override
    {
        return m_microphoneDenied && m_microphoneDenied() ? MicrophoneAccess::denied
                                                          : MicrophoneAccess::authorized;
    }
    [[nodiscard]] bool accessibility() const override { return false; }
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
            return m_obstacles().pasting;
        case Permission::inputMonitoring:
            return m_obstacles().watching;
        }
        Q_UNREACHABLE();
    }

private:
    KeyObstacles (*m_obstacles)();
    MicrophoneDenied m_microphoneDenied;
};

} // namespace tulvane
