#pragma once

#include <platform/linux/session/MicrophoneObstacle.h>
#include <platform/linux/session/Session.h>
#include <platform/linux/session/WaylandOffers.h>
#include <ports/PrivacyPermissions.h>

namespace tulvane {

/// What a Wayland desktop lets the program do: everything depends on what the compositor offers it. Main
/// thread.
class WaylandPrivacyPermissions final : public PrivacyPermissions {
public:
    /// The obstacles are asked for at each question, so that they are in the language of that moment.
    WaylandPrivacyPermissions(const WaylandOffers& offers, KeyObstacles (*obstacles)(),
                              MicrophoneDenied microphoneDenied)
        : m_reachesPrograms(offers.holdsClipboard && offers.postsKeys()),
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
    /// No compositor shows a program the keys of others.
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
