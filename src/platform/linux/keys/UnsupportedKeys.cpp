#include <platform/linux/keys/KeyText.h>
#include <platform/linux/keys/UnsupportedKeys.h>

namespace tulvane {

Result<void, HotKeyError> UnsupportedHotKeys::support() const
{
    return failure(HotKeyError::unsupported(m_reason));
}

Result<std::unique_ptr<GlobalHotKeys::Registration>, HotKeyError>
UnsupportedHotKeys::registerHotKey(HotKeyId, const KeyCombination&)
{
    return failure(HotKeyError::unsupported(m_reason));
}

// There are no events and no changes to tell of.
void UnsupportedHotKeys::setEventHandler(const EventHandler&) {}
void UnsupportedHotKeys::setChangeHandler(const ChangeHandler&) {}

QList<SymbolicHotKey> UnsupportedHotKeys::symbolicHotKeys(const KeyCombination&)
{
    return {};
}

KeyDisplay UnsupportedHotKeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(combination);
}

std::optional<KeyCombination> UnsupportedHotKeys::combination(const NativeKey&) const
{
    return std::nullopt;
}

Result<std::unique_ptr<ModifierEvents::Tap>, ModifierEventsError>
UnsupportedModifierEvents::createTap(qint64, const Handler&)
{
    return failure(ModifierEventsError::unsupported(m_reason));
}

} // namespace tulvane
