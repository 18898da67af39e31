#include <hotkeys/FreeCombination.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

constexpr quint32 letterD = 2;
constexpr quint32 f8 = 100;
constexpr quint32 f9 = 101;

/// The easiest first. None with Shift beside Option: desktops change the keyboard layout by those two.
constexpr std::array candidates{
    KeyCombination{virtualKeys::space, carbon::option},
    KeyCombination{virtualKeys::space, carbon::control | carbon::option},
    KeyCombination{letterD, carbon::control | carbon::option},
    KeyCombination{virtualKeys::space, carbon::command | carbon::option},
    KeyCombination{letterD, carbon::command | carbon::option},
    KeyCombination{f9, 0},
    KeyCombination{f8, 0},
};

} // namespace

std::optional<KeyCombination> freeCombination(GlobalHotkeys& hotkeys,
                                              const ShortcutRules::MenuItemOf& menuItemOf)
{
    if (!hotkeys.support())
        return std::nullopt;
    const ShortcutRules rules(hotkeys, menuItemOf);
    const auto* const found = std::ranges::find_if(candidates, [&](const KeyCombination& candidate) {
        return rules.judge(candidate).verdict == ShortcutRules::Verdict::accepted &&
               hotkeys.isFree(candidate).has_value();
    });
    return found == candidates.end() ? std::nullopt : std::optional(*found);
}

} // namespace tulvane
