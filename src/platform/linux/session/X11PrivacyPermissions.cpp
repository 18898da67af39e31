#include <base/Translate.h>
#include <platform/linux/session/MicrophoneObstacle.h>
#include <platform/linux/session/X11PrivacyPermissions.h>

namespace tulvane {

MicrophoneAccess X11PrivacyPermissions::microphone() const
{
    return m_microphoneDenied && m_microphoneDenied() ? MicrophoneAccess::denied
                                                      : MicrophoneAccess::authorized;
}

bool X11PrivacyPermissions::accessibility() const
{
    return m_abilities.postsKeys;
}

bool X11PrivacyPermissions::inputMonitoring() const
{
    return m_abilities.watchesKeys;
}

QFuture<bool> X11PrivacyPermissions::requestMicrophone()
{
    return QtFuture::makeReadyFuture(microphone() == MicrophoneAccess::authorized);
}

Obstacle X11PrivacyPermissions::displayObstacle() const
{
    return {translate("No X display could be reached."),
            translate("Start Tulvane from your desktop session, where DISPLAY is set.")};
}

Obstacle X11PrivacyPermissions::obstacle(Permission permission) const
{
    switch (permission) {
    case Permission::microphone:
        if (microphone() == MicrophoneAccess::authorized)
            return {};
        return refusedMicrophone();
    case Permission::accessibility:
        if (accessibility())
            return {};
        if (!m_abilities.displayReached)
            return displayObstacle();
        return {translate("The X server lacks the XTEST extension, so no keys can be pressed for you."),
                translate("Start the X server with XTEST. Until then the text is left on the clipboard.")};
    case Permission::inputMonitoring:
        if (inputMonitoring())
            return {};
        if (!m_abilities.displayReached)
            return displayObstacle();
        return {translate("The X server lacks the XInput 2 extension, so single keys cannot be watched."),
                translate("Use a key combination as the hotkey.")};
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
