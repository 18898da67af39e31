#pragma once

#include <ports/PrivacyPermissions.h>

#include <functional>

namespace tulvane {

/// The kind of desktop session that the program runs in.
enum class SessionKind { x11, wayland, none };

/// From what the session put into the environment. Any thread.
[[nodiscard]] SessionKind currentSession();

/// What an X11 desktop lets the program do. Nothing is ever asked or granted there: everything depends on
/// what the X server can do. In a Wayland session, where the X server's answers mean nothing for other
/// programs, keys can be neither posted nor watched yet. Main thread.
class X11PrivacyPermissions final : public PrivacyPermissions {
public:
    /// Whether the sound server refuses us the microphone; a server that is not there does not.
    using MicrophoneDenied = std::function<bool()>;

    /// What the X server offers.
    struct Abilities {
        SessionKind session = SessionKind::none;
        bool displayReached = false;
        bool postsKeys = false;   ///< has XTEST
        bool watchesKeys = false; ///< has XInput 2
    };

    X11PrivacyPermissions(const Abilities& abilities, MicrophoneDenied microphoneDenied)
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
    [[nodiscard]] PermissionObstacle obstacle(Permission permission) const override;

private:
    [[nodiscard]] PermissionObstacle displayObstacle() const;

    Abilities m_abilities;
    MicrophoneDenied m_microphoneDenied;
};

} // namespace tulvane
