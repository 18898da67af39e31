#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// A single modifier key that serves as a hotkey beside the key combination.
enum class ModifierHotkey { none, rightOption, rightCommand, rightControl, rightShift, fn };

template <>
struct StoredCases<ModifierHotkey> {
    static constexpr std::array cases{
        StoredCase<ModifierHotkey>{ModifierHotkey::none, "none", QT_TRANSLATE_NOOP("tulvane", "Off")},
        StoredCase<ModifierHotkey>{ModifierHotkey::rightOption, "rightOption",
                                   QT_TRANSLATE_NOOP("tulvane", "Right ⌥ Option")},
        StoredCase<ModifierHotkey>{ModifierHotkey::rightCommand, "rightCommand",
                                   QT_TRANSLATE_NOOP("tulvane", "Right ⌘ Command")},
        StoredCase<ModifierHotkey>{ModifierHotkey::rightControl, "rightControl",
                                   QT_TRANSLATE_NOOP("tulvane", "Right ⌃ Control")},
        StoredCase<ModifierHotkey>{ModifierHotkey::rightShift, "rightShift",
                                   QT_TRANSLATE_NOOP("tulvane", "Right ⇧ Shift")},
        StoredCase<ModifierHotkey>{ModifierHotkey::fn, "fn", QT_TRANSLATE_NOOP("tulvane", "fn / 🌐 Globe")},
    };
};

} // namespace tulvane
