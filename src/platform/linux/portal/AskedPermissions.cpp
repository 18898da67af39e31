#include <base/Translate.h>
#include <platform/linux/portal/AskedPermissions.h>

#include <utility>

namespace tulvane {

AskedPermissions::AskedPermissions(std::unique_ptr<PrivacyPermissions> session,
                                   std::shared_ptr<PortalRemoteDesktop> keys, bool isGnome)
    : m_session(std::move(session)),
      m_keys(std::move(keys)),
      m_isGnome(isGnome)
{
}

AskedPermissions::~AskedPermissions() = default;

bool AskedPermissions::asksUser(Permission permission) const
{
    return permission == Permission::accessibility && !accessibility();
}

Obstacle AskedPermissions::obstacle(Permission permission) const
{
    if (permission != Permission::accessibility)
        return m_session->obstacle(permission);
    return accessibility() ? Obstacle{} : keyObstacle();
}

QString AskedPermissions::howToAllow() const
{
    return m_isGnome
               ? translate(
                     "In the dialog, switch on “Allow Remote Interaction” and choose “Share”. While it is "
                     "allowed, a sign for remote control stands in the top bar.")
               : translate("The dialog speaks of remote control: allow the keyboard.");
}

Obstacle AskedPermissions::keyObstacle() const
{
    using State = PortalRemoteDesktop::State;
    const auto onClipboard = [] {
        return translate(
            "Texts are left on the clipboard: paste them yourself, or let the desktop ask again.");
    };
    switch (m_keys->state()) {
    case State::notAsked:
        return {
            m_keys->isRemembered()
                ? translate("This desktop asks you once, in a dialog of its own, whether Tulvane may press "
                            "keys.")
                : translate("This desktop asks you in a dialog of its own whether Tulvane may press keys, "
                            "and asks again at each start of Tulvane."),
            howToAllow()};
    case State::asking:
        return {translate("The desktop is asking you now whether Tulvane may press keys."), howToAllow()};
    case State::declined:
        return {translate("You have not allowed Tulvane to press keys."), onClipboard()};
    case State::noKeyboard:
        return {translate("You have allowed Tulvane remote control, but not of the keyboard."), howToAllow()};
    case State::ended:
        return {translate("The desktop no longer lets Tulvane press keys: its remote control was ended."),
                onClipboard()};
    case State::failed:
        return {translate("The desktop could not ask you whether Tulvane may press keys."), onClipboard()};
    case State::granted:
        break;
    }
    return {};
}

} // namespace tulvane
