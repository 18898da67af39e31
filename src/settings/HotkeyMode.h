#pragma once

#include <settings/StoredEnumeration.h>

#include <QtGlobal>

namespace tulvane {

/// How the hotkey starts and stops a recording.
enum class HotkeyMode { toggle, hold, hybrid };

template <>
struct StoredCases<HotkeyMode> {
    static constexpr std::array cases{
        StoredCase<HotkeyMode>{HotkeyMode::toggle, "toggle",
                               QT_TRANSLATE_NOOP("tulvane", "Toggle (press to start, press to stop)")},
        StoredCase<HotkeyMode>{HotkeyMode::hold, "hold", QT_TRANSLATE_NOOP("tulvane", "Hold to talk")},
        StoredCase<HotkeyMode>{HotkeyMode::hybrid, "hybrid",
                               QT_TRANSLATE_NOOP("tulvane", "Hold to talk, tap to toggle")},
    };
};

} // namespace tulvane
