#include <hotkeys/PasteCombinations.h>
#include <hotkeys/ShortcutRules.h>
#include <hotkeys/ShortcutTexts.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

/// A key that anybody types would be gone for typing.
bool mayBeTakenFromTyping(const KeyCombination& combination)
{
    constexpr quint32 enough = carbon::command | carbon::control | carbon::option;
    return !virtualKeys::isModifier(combination.keyCode) &&
           ((combination.modifiers & enough) != 0 || virtualKeys::isFunctionKey(combination.keyCode));
}

} // namespace

ShortcutRules::ShortcutRules(GlobalHotkeys& hotkeys, MenuItemOf menuItemOf)
    : m_hotkeys(hotkeys),
      m_menuItemOf(std::move(menuItemOf))
{
}

ShortcutRules::Answer ShortcutRules::judge(const KeyCombination& combination) const
{
    if (isUsedForPasting(m_hotkeys, combination))
        return {Verdict::refused, shortcutTexts::usedForPasting.text()};
    if (!mayBeTakenFromTyping(combination))
        return {Verdict::notACombination, {}};
    if (const auto item = m_menuItemOf ? m_menuItemOf(combination) : std::nullopt)
        return {Verdict::refused, shortcutTexts::usedByMenuItem.text().arg(*item)};
    if (isUsedBySystem(combination))
        return {Verdict::refused,
                shortcutTexts::usedBySystem.text() + QLatin1Char(' ') + shortcutTexts::canBeChanged.text()};
    return {Verdict::accepted, {}};
}

bool ShortcutRules::isUsedBySystem(const KeyCombination& combination) const
{
    const auto hotkeys = m_hotkeys.symbolicHotkeys(combination);
    return std::ranges::any_of(
        hotkeys, [&](const SymbolicHotkey& key) { return key.enabled && key.combination == combination; });
}

} // namespace tulvane
