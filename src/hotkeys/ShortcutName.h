#pragma once

#include <hotkeys/Shortcut.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <QString>

#include <optional>

namespace tulvane {

/// What a global key combination is for, and the combination that it has until the user chooses one.
struct ShortcutName {
    QString rawName;
    std::optional<Shortcut> defaultShortcut;

    /// The one that starts and stops dictation: ⌥Space.
    [[nodiscard]] static const ShortcutName& dictate()
    {
        static const ShortcutName name{QStringLiteral("dictate"),
                                       Shortcut{virtualKeys::space, carbon::option}};
        return name;
    }
};

} // namespace tulvane
