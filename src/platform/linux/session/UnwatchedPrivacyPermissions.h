#pragma once

#include <platform/linux/session/MicrophoneObstacle.h>
#include <platform/linux/session/Session.h>
#include <ports/PrivacyPermissions.h>

namespace tulvane {

/// The permissions of a session whose display server shows no program the keys of others; where the
/// keyboards' own devices can be read, those are watched instead. Main thread.
class UnwatchedPrivacyPermissions final : public PrivacyPermissions {
public:
    /// `reachesPrograms`: whether the session lets the program paste into others. The obstacles are asked for
    /// at each question, so that they are in the language of that moment. `keyboards` says why the keyboards
    /// cannot be read, nothing where they can; without it there is no way to watch.
    UnwatchedPrivacyPermissions(bool reachesPrograms, KeyObstacles (*obstacles)(),
                                MicrophoneDenied microphoneDenied, Obstacle (*keyboards)() = nullptr)
        : m_reachesPrograms(reachesPrograms),
          m_obstacles(obstacles),
          m_microphoneDenied(std::move(microphoneDenied)),
          m_keyboards(keyboards)
    {
    }

    [[nodiscard]] MicrophoneAccess microphone() const override
    {
        return m_microphoneDenied && m_microphoneDenied() ? MicrophoneAccess::denied
                                                          : MicrophoneAccess::authorized;
    }
    [[nodiscard]] bool accessibility() const override { return m_reachesPrograms; }
    [[nodiscard]] bool inputMonitoring() const override { return m_keyboards && m_keyboards() == Obstacle(); }
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
            return m_keyboards ? m_keyboards() : m_obstacles().watching;
        }
        Q_UNREACHABLE();
    }

private:
    bool m_reachesPrograms;
    KeyObstacles (*m_obstacles)();
    MicrophoneDenied m_microphoneDenied;
    Obstacle (*m_keyboards)();
};

} // namespace tulvane
