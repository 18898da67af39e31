#pragma once

#include <platform/linux/session/X11Abilities.h>
#include <ports/PrivacyPermissions.h>

#include <functional>

namespace tulvane {

/// What an X11 desktop lets the program do. Nothing is ever asked or granted there: everything depends on
/// what the X server can do. Main thread.
class X11PrivacyPermissions final : public PrivacyPermissions {
public:
    /// Whether the sound server refuses us the microphone; a server that is not there does not.
    using MicrophoneDenied = std::function<bool()>;

    X11PrivacyPermissions(const X11Abilities& abilities, MicrophoneDenied microphoneDenied)
        : m_abilities(abilities),
          m_microphoneDenied(std::move(microphoneDenied))
    {
    }

    [[nodiscard]] MicrophoneAccess microphone() const override;
    [[nodiscard]] bool accessibility() const override;
    [[nodiscard]] bool inputMonitoring() const override;
    [[nodiscard]] QFuture<bool> requestMicrophone() override;
    void requestAccessibility() override {}
    void requestInputMonitoring() override {}
    [[nodiscard]] Obstacle obstacle(Permission permission) const override;

private:
    [[nodiscard]] Obstacle displayObstacle() const;

    X11Abilities m_abilities;
    MicrophoneDenied m_microphoneDenied;
};

} // namespace tulvane
