#include <platform/linux/keys/KeyText.h>
#include <platform/linux/session/UnsupportedHotkeys.h>

namespace tulvane {

Result<void, HotkeyError> UnsupportedHotkeys::support() const
{
    return failure(HotkeyError::unsupported(m_reason));
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
UnsupportedHotkeys::registerHotkey(HotkeyId, const KeyCombination&)
{
    return failure(HotkeyError::unsupported(m_reason));
}

// There are no events and no changes to tell of.
void UnsupportedHotkeys::setEventHandler(const EventHandler&) {}
void UnsupportedHotkeys::setChangeHandler(const ChangeHandler&) {}

QList<SymbolicHotkey> UnsupportedHotkeys::symbolicHotkeys(const KeyCombination&)
{
    return {};
}

KeyDisplay UnsupportedHotkeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(combination);
}

std::optional<KeyCombination> UnsupportedHotkeys::combination(const NativeKey&) const
{
    return std::nullopt;
}

Result<std::unique_ptr<ModifierEvents::Tap>, ModifierEventsError>
UnsupportedModifierEvents::createTap(qint64, const Handler&)
{
    return failure(ModifierEventsError::unsupported(m_reason));
}

} // namespace tulvane
