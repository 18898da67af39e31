#include <platform/linux/keys/KeyText.h>
#include <platform/linux/session/NullHotkeys.h>

namespace tulvane {

Result<void, HotkeyError> NullHotkeys::support() const
{
    return failure(HotkeyError::unsupported(m_reason));
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
NullHotkeys::registerHotkey(HotkeyId, const KeyCombination&)
{
    return failure(HotkeyError::unsupported(m_reason));
}

// There are no events and no changes to tell of.
void NullHotkeys::setEventHandler(const EventHandler&) {}
void NullHotkeys::setChangeHandler(const ChangeHandler&) {}

QList<SymbolicHotkey> NullHotkeys::symbolicHotkeys(const KeyCombination&)
{
    return {};
}

KeyDisplay NullHotkeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(combination);
}

std::optional<KeyCombination> NullHotkeys::combination(const NativeKey&) const
{
    return std::nullopt;
}

} // namespace tulvane
