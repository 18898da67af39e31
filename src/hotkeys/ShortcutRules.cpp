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
    if (isUsedForPasting(combination))
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

bool ShortcutRules::isUsedForPasting(const KeyCombination& combination) const
{
    const quint32 modifiers = combination.modifiers;
    if (combination.keyCode == virtualKeys::insert)
        return modifiers == carbon::shift || modifiers == carbon::control;
    const bool isChord = modifiers == carbon::control || modifiers == carbon::command ||
                         modifiers == (carbon::control | carbon::shift);
    if (!isChord)
        return false;
    // A program goes by the letter, and by the key's place where the layout has no Latin letters.
    const QStringList caps = m_hotkeys.display(combination).caps;
    const QString letter = caps.isEmpty() ? QString() : caps.constLast();
    if (letter.size() == 1 && letter.front().unicode() < 0x80)
        return letter == u"C" || letter == u"V";
    return combination.keyCode == virtualKeys::letterC || combination.keyCode == virtualKeys::letterV;
}

bool ShortcutRules::isUsedBySystem(const KeyCombination& combination) const
{
    const auto hotkeys = m_hotkeys.symbolicHotkeys(combination);
    return std::ranges::any_of(
        hotkeys, [&](const SymbolicHotkey& key) { return key.enabled && key.combination == combination; });
}

} // namespace tulvane
