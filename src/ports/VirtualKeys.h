#pragma once

#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstdint>

namespace tulvane {

/// What a key does. A `printing` key is called what the keyboard layout makes it type; of a `keypad` key the
/// table has what stands on the key; the names of `named` keys and modifiers are for translation.
enum class KeyKind : std::uint8_t { printing, keypad, named, function, modifier };

/// A key by its place on the keyboard, whatever the layout makes it type.
struct VirtualKey {
    quint32 code;    ///< the macOS virtual key code, by which keys are stored
    quint16 evdev;   ///< the Linux kernel's number
    const char* xkb; ///< the place's name in an XKB keymap; empty where X11 cannot see the key
    KeyKind kind;
    const char* name; ///< English; of a printing key what the US layout types
};

namespace virtualKeys {

inline constexpr quint32 letterC = 8;
inline constexpr quint32 letterV = 9;
inline constexpr quint32 letterY = 16;
inline constexpr quint32 tab = 48;
inline constexpr quint32 space = 49;
inline constexpr quint32 backspace = 51;
inline constexpr quint32 escape = 53;
inline constexpr quint32 rightCommand = 54;
inline constexpr quint32 rightShift = 60;
inline constexpr quint32 rightOption = 61;
inline constexpr quint32 rightControl = 62;
inline constexpr quint32 fn = 63;
inline constexpr quint32 insert = 114;
inline constexpr quint32 home = 115;
inline constexpr quint32 pageUp = 116;
inline constexpr quint32 forwardDelete = 117;
inline constexpr quint32 pageDown = 121;
inline constexpr quint32 f1 = 122;

// clang-format off
/// Every key that can be stored, in the order of the codes.
inline constexpr std::array all{
    VirtualKey{0, 30, "AC01", KeyKind::printing, "A"},
    VirtualKey{1, 31, "AC02", KeyKind::printing, "S"},
    VirtualKey{2, 32, "AC03", KeyKind::printing, "D"},
    VirtualKey{3, 33, "AC04", KeyKind::printing, "F"},
    VirtualKey{4, 35, "AC06", KeyKind::printing, "H"},
    VirtualKey{5, 34, "AC05", KeyKind::printing, "G"},
    VirtualKey{6, 44, "AB01", KeyKind::printing, "Z"},
    VirtualKey{7, 45, "AB02", KeyKind::printing, "X"},
    VirtualKey{8, 46, "AB03", KeyKind::printing, "C"},
    VirtualKey{9, 47, "AB04", KeyKind::printing, "V"},
    VirtualKey{10, 86, "LSGT", KeyKind::printing, "<"},
    VirtualKey{11, 48, "AB05", KeyKind::printing, "B"},
    VirtualKey{12, 16, "AD01", KeyKind::printing, "Q"},
    VirtualKey{13, 17, "AD02", KeyKind::printing, "W"},
    VirtualKey{14, 18, "AD03", KeyKind::printing, "E"},
    VirtualKey{15, 19, "AD04", KeyKind::printing, "R"},
    VirtualKey{16, 21, "AD06", KeyKind::printing, "Y"},
    VirtualKey{17, 20, "AD05", KeyKind::printing, "T"},
    VirtualKey{18, 2, "AE01", KeyKind::printing, "1"},
    VirtualKey{19, 3, "AE02", KeyKind::printing, "2"},
    VirtualKey{20, 4, "AE03", KeyKind::printing, "3"},
    VirtualKey{21, 5, "AE04", KeyKind::printing, "4"},
    VirtualKey{22, 7, "AE06", KeyKind::printing, "6"},
    VirtualKey{23, 6, "AE05", KeyKind::printing, "5"},
    VirtualKey{24, 13, "AE12", KeyKind::printing, "="},
    VirtualKey{25, 10, "AE09", KeyKind::printing, "9"},
    VirtualKey{26, 8, "AE07", KeyKind::printing, "7"},
    VirtualKey{27, 12, "AE11", KeyKind::printing, "-"},
    VirtualKey{28, 9, "AE08", KeyKind::printing, "8"},
    VirtualKey{29, 11, "AE10", KeyKind::printing, "0"},
    VirtualKey{30, 27, "AD12", KeyKind::printing, "]"},
    VirtualKey{31, 24, "AD09", KeyKind::printing, "O"},
    VirtualKey{32, 22, "AD07", KeyKind::printing, "U"},
    VirtualKey{33, 26, "AD11", KeyKind::printing, "["},
    VirtualKey{34, 23, "AD08", KeyKind::printing, "I"},
    VirtualKey{35, 25, "AD10", KeyKind::printing, "P"},
    VirtualKey{36, 28, "RTRN", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Return")},
    VirtualKey{37, 38, "AC09", KeyKind::printing, "L"},
    VirtualKey{38, 36, "AC07", KeyKind::printing, "J"},
    VirtualKey{39, 40, "AC11", KeyKind::printing, "'"},
    VirtualKey{40, 37, "AC08", KeyKind::printing, "K"},
    VirtualKey{41, 39, "AC10", KeyKind::printing, ";"},
    VirtualKey{42, 43, "BKSL", KeyKind::printing, "\\"},
    VirtualKey{43, 51, "AB08", KeyKind::printing, ","},
    VirtualKey{44, 53, "AB10", KeyKind::printing, "/"},
    VirtualKey{45, 49, "AB06", KeyKind::printing, "N"},
    VirtualKey{46, 50, "AB07", KeyKind::printing, "M"},
    VirtualKey{47, 52, "AB09", KeyKind::printing, "."},
    VirtualKey{48, 15, "TAB", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Tab")},
    VirtualKey{49, 57, "SPCE", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Space")},
    VirtualKey{50, 41, "TLDE", KeyKind::printing, "`"},
    VirtualKey{51, 14, "BKSP", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Backspace")},
    VirtualKey{53, 1, "ESC", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Escape")},
    VirtualKey{54, 126, "RWIN", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Right Super")},
    VirtualKey{55, 125, "LWIN", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Left Super")},
    VirtualKey{56, 42, "LFSH", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Left Shift")},
    VirtualKey{57, 58, "CAPS", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Caps Lock")},
    VirtualKey{58, 56, "LALT", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Left Alt")},
    VirtualKey{59, 29, "LCTL", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Left Ctrl")},
    VirtualKey{60, 54, "RTSH", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Right Shift")},
    VirtualKey{61, 100, "RALT", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Right Alt")},
    VirtualKey{62, 97, "RCTL", KeyKind::modifier, QT_TRANSLATE_NOOP("tulvane", "Right Ctrl")},
    VirtualKey{63, 464, "", KeyKind::modifier, "fn"},
    VirtualKey{64, 187, "FK17", KeyKind::function, "F17"},
    VirtualKey{65, 83, "KPDL", KeyKind::keypad, "."},
    VirtualKey{67, 55, "KPMU", KeyKind::keypad, "*"},
    VirtualKey{69, 78, "KPAD", KeyKind::keypad, "+"},
    VirtualKey{71, 69, "NMLK", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Num Lock")},
    VirtualKey{72, 115, "VOL+", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Volume Up")},
    VirtualKey{73, 114, "VOL-", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Volume Down")},
    VirtualKey{74, 113, "MUTE", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Mute")},
    VirtualKey{75, 98, "KPDV", KeyKind::keypad, "/"},
    VirtualKey{76, 96, "KPEN", KeyKind::keypad, "Enter"},
    VirtualKey{78, 74, "KPSU", KeyKind::keypad, "-"},
    VirtualKey{79, 188, "FK18", KeyKind::function, "F18"},
    VirtualKey{80, 189, "FK19", KeyKind::function, "F19"},
    VirtualKey{81, 117, "KPEQ", KeyKind::keypad, "="},
    VirtualKey{82, 82, "KP0", KeyKind::keypad, "0"},
    VirtualKey{83, 79, "KP1", KeyKind::keypad, "1"},
    VirtualKey{84, 80, "KP2", KeyKind::keypad, "2"},
    VirtualKey{85, 81, "KP3", KeyKind::keypad, "3"},
    VirtualKey{86, 75, "KP4", KeyKind::keypad, "4"},
    VirtualKey{87, 76, "KP5", KeyKind::keypad, "5"},
    VirtualKey{88, 77, "KP6", KeyKind::keypad, "6"},
    VirtualKey{89, 71, "KP7", KeyKind::keypad, "7"},
    VirtualKey{90, 190, "FK20", KeyKind::function, "F20"},
    VirtualKey{91, 72, "KP8", KeyKind::keypad, "8"},
    VirtualKey{92, 73, "KP9", KeyKind::keypad, "9"},
    VirtualKey{93, 124, "AE13", KeyKind::printing, "¥"},
    VirtualKey{94, 89, "AB11", KeyKind::printing, "_"},
    VirtualKey{95, 121, "KPPT", KeyKind::keypad, ","},
    VirtualKey{96, 63, "FK05", KeyKind::function, "F5"},
    VirtualKey{97, 64, "FK06", KeyKind::function, "F6"},
    VirtualKey{98, 65, "FK07", KeyKind::function, "F7"},
    VirtualKey{99, 61, "FK03", KeyKind::function, "F3"},
    VirtualKey{100, 66, "FK08", KeyKind::function, "F8"},
    VirtualKey{101, 67, "FK09", KeyKind::function, "F9"},
    VirtualKey{102, 123, "HJCV", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Eisu")},
    VirtualKey{103, 87, "FK11", KeyKind::function, "F11"},
    VirtualKey{104, 122, "HNGL", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Kana")},
    VirtualKey{105, 183, "FK13", KeyKind::function, "F13"},
    VirtualKey{106, 186, "FK16", KeyKind::function, "F16"},
    VirtualKey{107, 184, "FK14", KeyKind::function, "F14"},
    VirtualKey{109, 68, "FK10", KeyKind::function, "F10"},
    VirtualKey{110, 127, "COMP", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Menu")},
    VirtualKey{111, 88, "FK12", KeyKind::function, "F12"},
    VirtualKey{113, 185, "FK15", KeyKind::function, "F15"},
    VirtualKey{114, 110, "INS", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Insert")},
    VirtualKey{115, 102, "HOME", KeyKind::named, "Home"}, // see linuxKeyDisplay
    VirtualKey{116, 104, "PGUP", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Page Up")},
    VirtualKey{117, 111, "DELE", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Delete")},
    VirtualKey{118, 62, "FK04", KeyKind::function, "F4"},
    VirtualKey{119, 107, "END", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "End")},
    VirtualKey{120, 60, "FK02", KeyKind::function, "F2"},
    VirtualKey{121, 109, "PGDN", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Page Down")},
    VirtualKey{122, 59, "FK01", KeyKind::function, "F1"},
    VirtualKey{123, 105, "LEFT", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Left")},
    VirtualKey{124, 106, "RGHT", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Right")},
    VirtualKey{125, 108, "DOWN", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Down")},
    VirtualKey{126, 103, "UP", KeyKind::named, QT_TRANSLATE_NOOP("tulvane", "Up")},
};
// clang-format on

[[nodiscard]] constexpr const VirtualKey* byCode(quint64 code)
{
    const auto* const found =
        std::ranges::find_if(all, [=](const VirtualKey& key) { return key.code == code; });
    return found == all.end() ? nullptr : found;
}

[[nodiscard]] constexpr const VirtualKey* byEvdev(quint32 evdev)
{
    const auto* const found =
        std::ranges::find_if(all, [=](const VirtualKey& key) { return key.evdev == evdev; });
    return found == all.end() ? nullptr : found;
}

/// Whether the code is that of F1 to F20.
[[nodiscard]] constexpr bool isFunctionKey(quint64 code)
{
    const VirtualKey* const key = byCode(code);
    return key != nullptr && key->kind == KeyKind::function;
}

[[nodiscard]] constexpr bool isModifier(quint64 code)
{
    const VirtualKey* const key = byCode(code);
    return key != nullptr && key->kind == KeyKind::modifier;
}

} // namespace virtualKeys

} // namespace tulvane
