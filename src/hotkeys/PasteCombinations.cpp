#include <hotkeys/PasteCombinations.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

namespace tulvane {

namespace {

/// What programs go by: the letter, and the key's place where the layout has no Latin letters.
QChar letterOf(const GlobalHotkeys& hotkeys, const KeyCombination& combination)
{
    const QStringList caps = hotkeys.display(combination).caps;
    const QString letter = caps.isEmpty() ? QString() : caps.constLast();
    if (letter.size() == 1 && letter.front().unicode() < 0x80)
        return letter.front();
    switch (combination.keyCode) {
    case virtualKeys::letterC:
        return u'C';
    case virtualKeys::letterV:
        return u'V';
    case virtualKeys::letterY:
        return u'Y';
    default:
        return {};
    }
}

} // namespace

bool isUsedForPasting(const GlobalHotkeys& hotkeys, const KeyCombination& combination)
{
    const quint32 modifiers = combination.modifiers;
    if (combination.keyCode == virtualKeys::insert)
        return modifiers == carbon::shift || modifiers == carbon::control;
    if (modifiers != carbon::control && modifiers != carbon::command &&
        modifiers != (carbon::control | carbon::shift))
        return false;
    const QChar letter = letterOf(hotkeys, combination);
    // Emacs pastes with Ctrl+Y.
    return letter == u'C' || letter == u'V' || (letter == u'Y' && modifiers == carbon::control);
}

} // namespace tulvane
