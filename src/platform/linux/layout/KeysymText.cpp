#include <platform/linux/layout/KeysymText.h>

#include <xkbcommon/xkbcommon-keysyms.h>
#include <xkbcommon/xkbcommon.h>

#include <array>
#include <utility>

namespace tulvane {

QString characterOfKeysym(quint32 keysym)
{
    constexpr std::array dead{
        std::pair{XKB_KEY_dead_grave, u'`'},      std::pair{XKB_KEY_dead_acute, u'´'},
        std::pair{XKB_KEY_dead_circumflex, u'^'}, std::pair{XKB_KEY_dead_tilde, u'~'},
        std::pair{XKB_KEY_dead_diaeresis, u'¨'},  std::pair{XKB_KEY_dead_abovering, u'˚'},
        std::pair{XKB_KEY_dead_cedilla, u'¸'},    std::pair{XKB_KEY_dead_caron, u'ˇ'}};
    for (const auto& [deadKey, accent] : dead) {
        if (keysym == static_cast<xkb_keysym_t>(deadKey))
            return QString(QChar(accent));
    }
    const char32_t character = xkb_keysym_to_utf32(xkb_keysym_to_upper(keysym));
    return character > U' ' && QChar::isPrint(character) ? QString::fromUcs4(&character, 1) : QString();
}

quint32 keysymNamed(const QString& name)
{
    const QList<uint> characters = name.toUcs4();
    if (characters.size() == 1)
        return xkb_utf32_to_keysym(characters.first());
    const QByteArray utf8 = name.toUtf8();
    const xkb_keysym_t exact = xkb_keysym_from_name(utf8.constData(), XKB_KEYSYM_NO_FLAGS);
    return exact != XKB_KEY_NoSymbol ? exact
                                     : xkb_keysym_from_name(utf8.constData(), XKB_KEYSYM_CASE_INSENSITIVE);
}

} // namespace tulvane
