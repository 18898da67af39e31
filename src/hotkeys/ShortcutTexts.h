#pragma once

#include <base/Translate.h>
#include <ports/HotkeyError.h>

#include <QString>
#include <QtGlobal>

namespace tulvane {

/// A text of the field in which the user sets a combination.
struct ShortcutText {
    const char* localizationKey;
    const char* english;

    [[nodiscard]] QString text() const { return translate(english); }
};

namespace shortcutTexts {

inline constexpr ShortcutText usedByMenuItem{
    "keyboard_shortcut_used_by_menu_item",
    QT_TRANSLATE_NOOP("tulvane", "The menu item “%1” already uses this key combination.")};
inline constexpr ShortcutText usedBySystem{
    "keyboard_shortcut_used_by_system",
    QT_TRANSLATE_NOOP("tulvane", "The system already uses this key combination.")};
inline constexpr ShortcutText usedForPasting{"keyboard_shortcut_used_for_pasting",
                                             HotkeyError::usedForPasting};
inline constexpr ShortcutText canBeChanged{
    "keyboard_shortcuts_can_be_changed",
    QT_TRANSLATE_NOOP("tulvane", "What the system uses can be changed in its keyboard settings.")};
inline constexpr ShortcutText recordShortcut{"record_shortcut",
                                             QT_TRANSLATE_NOOP("tulvane", "Record shortcut")};
inline constexpr ShortcutText pressShortcut{"press_shortcut", QT_TRANSLATE_NOOP("tulvane", "Press shortcut")};

// The explanation below the field, line by line.
inline constexpr ShortcutText howToRecord{
    "record_shortcut_how",
    QT_TRANSLATE_NOOP(
        "tulvane",
        "Click the field, then press the whole combination at once, for example ⌥ Space or ⌃⌥ D.")};
inline constexpr ShortcutText whatIsAccepted{
    "record_shortcut_rules",
    QT_TRANSLATE_NOOP("tulvane",
                      "It must include ⌘, ⌃ or ⌥, or be a function key such as F5. Letters alone, ⇧ "
                      "alone and fn alone are not accepted – the field just beeps.")};
inline constexpr ShortcutText howToClear{
    "record_shortcut_clear",
    QT_TRANSLATE_NOOP("tulvane",
                      "Backspace clears the field. To use fn or right ⌥ on its own, choose “Hold a "
                      "single key” above.")};

} // namespace shortcutTexts

} // namespace tulvane
