#include <base/Translate.h>
#include <platform/linux/evdev/EvdevKeyboard.h>
#include <platform/linux/evdev/KeyboardAccess.h>

#include <QDir>

namespace tulvane {

KeyboardAccess keyboardAccess(const QString& folder)
{
    bool isAnyDenied = false;
    for (const QString& name :
         QDir(folder).entryList({QStringLiteral("event*")}, QDir::System | QDir::Files)) {
        switch (EvdevKeyboard::look(folder + u'/' + name)) {
        case EvdevKeyboard::Opened::yes:
            return KeyboardAccess::granted;
        case EvdevKeyboard::Opened::denied:
            isAnyDenied = true;
            break;
        case EvdevKeyboard::Opened::noKeyboard:
            break;
        }
    }
    return isAnyDenied ? KeyboardAccess::denied : KeyboardAccess::none;
}

Obstacle obstacleOf(KeyboardAccess access)
{
    switch (access) {
    case KeyboardAccess::granted:
        return {};
    case KeyboardAccess::denied:
        return {translate("This desktop tells programs of no single key, and the system does not let Tulvane "
                          "read the keyboard."),
                translate("“sudo usermod -aG input $USER” and a new login allow it, and let every program of "
                          "yours read every key. A key combination needs none of this.")};
    case KeyboardAccess::none:
        return {translate("No keyboard can be read on this desktop."),
                translate("Use a key combination as the hotkey.")};
    }
    Q_UNREACHABLE();
}

} // namespace tulvane
