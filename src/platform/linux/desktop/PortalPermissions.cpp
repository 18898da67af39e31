#include <base/Translate.h>
#include <platform/linux/desktop/PortalPermissions.h>

#include <utility>

namespace tulvane {

PortalPermissions::PortalPermissions(std::unique_ptr<PrivacyPermissions> session,
                                     std::unique_ptr<MicrophonePermission> microphone)
    : m_session(std::move(session)),
      m_microphone(std::move(microphone))
{
}

PortalPermissions::~PortalPermissions() = default;

MicrophoneAccess PortalPermissions::microphone() const
{
    return m_microphone->isDenied() ? MicrophoneAccess::denied : m_session->microphone();
}

QFuture<bool> PortalPermissions::requestMicrophone()
{
    return m_microphone->isDenied() ? QtFuture::makeReadyFuture(false) : m_session->requestMicrophone();
}

Obstacle PortalPermissions::obstacle(Permission permission) const
{
    if (permission == Permission::microphone && m_microphone->isDenied())
        return {translate("Your desktop's privacy settings keep Tulvane from the microphone."),
                translate("Allow Tulvane to use the microphone there.")};
    return m_session->obstacle(permission);
}

} // namespace tulvane
