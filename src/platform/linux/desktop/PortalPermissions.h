#pragma once

#include <platform/linux/desktop/MicrophonePermission.h>
#include <ports/PrivacyPermissions.h>

#include <memory>

namespace tulvane {

/// A session's permissions, with what the user has decided about the microphone in the desktop's own privacy
/// settings before all else. Main thread.
class PortalPermissions final : public PrivacyPermissions {
public:
    PortalPermissions(std::unique_ptr<PrivacyPermissions> session,
                      std::unique_ptr<MicrophonePermission> microphone);
    ~PortalPermissions() override;
    PortalPermissions(const PortalPermissions&) = delete;
    PortalPermissions& operator=(const PortalPermissions&) = delete;

    [[nodiscard]] MicrophoneAccess microphone() const override;
    [[nodiscard]] bool accessibility() const override { return m_session->accessibility(); }
    [[nodiscard]] bool inputMonitoring() const override { return m_session->inputMonitoring(); }
    [[nodiscard]] QFuture<bool> requestMicrophone() override;
    void requestAccessibility() override { m_session->requestAccessibility(); }
    void requestInputMonitoring() override { m_session->requestInputMonitoring(); }
    [[nodiscard]] bool asksUser(Permission permission) const override
    {
        return m_session->asksUser(permission);
    }
    [[nodiscard]] Obstacle obstacle(Permission permission) const override;

private:
    std::unique_ptr<PrivacyPermissions> m_session;
    std::unique_ptr<MicrophonePermission> m_microphone;
};

} // namespace tulvane
