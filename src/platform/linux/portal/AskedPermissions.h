#pragma once

#include <platform/linux/portal/PortalRemoteDesktop.h>
#include <ports/PrivacyPermissions.h>

#include <memory>

namespace tulvane {

/// The permissions of a session whose portal asks the user before keys may be pressed: that one is as the
/// user has answered, the others are the session's own. Main thread.
class AskedPermissions final : public PrivacyPermissions {
public:
    AskedPermissions(std::unique_ptr<PrivacyPermissions> session, std::shared_ptr<PortalRemoteDesktop> keys,
                     bool isGnome);
    ~AskedPermissions() override;
    AskedPermissions(const AskedPermissions&) = delete;
    AskedPermissions& operator=(const AskedPermissions&) = delete;

    [[nodiscard]] MicrophoneAccess microphone() const override { return m_session->microphone(); }
    [[nodiscard]] bool accessibility() const override
    {
        return m_keys->state() == PortalRemoteDesktop::State::granted;
    }
    [[nodiscard]] bool inputMonitoring() const override { return m_session->inputMonitoring(); }
    [[nodiscard]] QFuture<bool> requestMicrophone() override { return m_session->requestMicrophone(); }
    void requestAccessibility() override { m_keys->ask(); }
    void requestInputMonitoring() override { m_session->requestInputMonitoring(); }
    [[nodiscard]] bool asksUser(Permission permission) const override;
    [[nodiscard]] Obstacle obstacle(Permission permission) const override;

private:
    [[nodiscard]] Obstacle keyObstacle() const;
    [[nodiscard]] QString howToAllow() const;

    std::unique_ptr<PrivacyPermissions> m_session;
    std::shared_ptr<PortalRemoteDesktop> m_keys;
    bool m_isGnome; ///< whose dialog is known
};

} // namespace tulvane
