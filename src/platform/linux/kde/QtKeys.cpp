#include <platform/linux/kde/QtKeys.h>
#include <ports/KeyModifiers.h>

#include <QChar>
#include <Qt>

#include <array>

namespace tulvane {

namespace {

struct Modifier {
    quint32 carbon;
    int qt;
};
constexpr std::array modifiers{Modifier{carbon::shift, static_cast<int>(Qt::SHIFT)},
                               Modifier{carbon::control, static_cast<int>(Qt::CTRL)},
                               Modifier{carbon::option, static_cast<int>(Qt::ALT)},
                               Modifier{carbon::command, static_cast<int>(Qt::META)}};

struct NamedKey {
    quint32 code; ///< as in VirtualKeys.h
    Qt::Key key;
};
constexpr std::array namedKeys{
    NamedKey{36, Qt::Key_Return},      NamedKey{48, Qt::Key_Tab},        NamedKey{49, Qt::Key_Space},
    NamedKey{51, Qt::Key_Backspace},   NamedKey{53, Qt::Key_Escape},     NamedKey{71, Qt::Key_NumLock},
    NamedKey{72, Qt::Key_VolumeUp},    NamedKey{73, Qt::Key_VolumeDown}, NamedKey{74, Qt::Key_VolumeMute},
    NamedKey{76, Qt::Key_Enter},       NamedKey{110, Qt::Key_Menu},      NamedKey{114, Qt::Key_Insert},
    NamedKey{115, Qt::Key_Home},       NamedKey{116, Qt::Key_PageUp},    NamedKey{117, Qt::Key_Delete},
    NamedKey{119, Qt::Key_End},        NamedKey{121, Qt::Key_PageDown},  NamedKey{123, Qt::Key_Left},
    NamedKey{124, Qt::Key_Right},      NamedKey{125, Qt::Key_Down},      NamedKey{126, Qt::Key_Up},
    NamedKey{102, Qt::Key_Eisu_Shift}, NamedKey{104, Qt::Key_Kana_Shift}};

int upper(char32_t character)
{
    return static_cast<int>(QChar::toUpper(character));
}

int keyNumber(const VirtualKey& key, const XkbKeymap& layout, bool withShift)
{
    switch (key.kind) {
    case KeyKind::printing:
        return upper(layout.character(key, withShift));
    case KeyKind::keypad:
        return key.name[1] == '\0' ? static_cast<int>(key.name[0]) : static_cast<int>(Qt::Key_Enter);
    case KeyKind::function:
        return static_cast<int>(Qt::Key_F1) + QString::fromUtf8(key.name + 1).toInt() - 1;
    case KeyKind::named:
        for (const auto& [code, number] : namedKeys) {
            if (code == key.code)
                return number;
        }
        return 0;
    case KeyKind::modifier:
        return 0;
    }
    Q_UNREACHABLE();
}

} // namespace

QList<int> qtKeysOf(const KeyCombination& combination, const XkbKeymap& layout)
{
    const VirtualKey* const key = virtualKeys::byCode(combination.keyCode);
    const int plain = key != nullptr ? keyNumber(*key, layout, false) : 0;
    if (plain == 0)
        return {};
    int held = 0;
    for (const auto& [carbon, qt] : modifiers)
        held |= (combination.modifiers & carbon) != 0 ? qt : 0;
    QList<int> keys{held | plain};
    // The Shift that makes another character is part of that character.
    const int shifted = keyNumber(*key, layout, true);
    if ((combination.modifiers & carbon::shift) != 0 && shifted != plain && shifted != 0)
        keys.append((held & ~static_cast<int>(Qt::SHIFT)) | shifted);
    return keys;
}

std::optional<KeyCombination> combinationOfQtKey(int number, const XkbKeymap& layout)
{
    quint32 held = 0;
    for (const auto& [carbon, qt] : modifiers)
        held |= (number & qt) != 0 ? carbon : 0;
    for (const VirtualKey& key : virtualKeys::all) {
        for (const quint32 shift : {quint32{0}, carbon::shift}) {
            const KeyCombination candidate{key.code, held | shift};
            if (qtKeysOf(candidate, layout).contains(number))
                return candidate;
        }
    }
    return std::nullopt;
}

} // namespace tulvane
