#include <platform/linux/portal/PortalTrigger.h>
#include <ports/KeyModifiers.h>

#include <QStringList>

#include <array>

namespace tulvane {

QString portalTrigger(const KeyCombination& combination, const XkbKeymap& layout)
{
    const VirtualKey* const key = virtualKeys::byCode(combination.keyCode);
    const QString name =
        key != nullptr && (combination.modifiers & ~carbon::all) == 0 ? layout.keysymName(*key) : QString();
    if (name.isEmpty())
        return {};
    QStringList words;
    for (const auto& [modifier, word] :
         std::array{std::pair(carbon::command, "LOGO"), std::pair(carbon::control, "CTRL"),
                    std::pair(carbon::option, "ALT"), std::pair(carbon::shift, "SHIFT")}) {
        if ((combination.modifiers & modifier) != 0)
            words.append(QString::fromLatin1(word));
    }
    words.append(name);
    return words.join(u'+');
}

} // namespace tulvane
