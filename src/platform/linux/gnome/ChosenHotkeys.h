#pragma once

#include <platform/linux/gnome/GnomeHotkeys.h>

#include <memory>
#include <utility>

namespace tulvane {

/// Hot keys over which the desktop asks the user: none is asked for that the user has not chosen, so that no
/// dialog comes unannounced. Main thread.
class ChosenHotkeys final : public GlobalHotkeys {
public:
    ChosenHotkeys(std::shared_ptr<GlobalHotkeys> hotkeys, GnomeHotkeys::Choices choices)
        : m_hotkeys(std::move(hotkeys)),
          m_choices(std::move(choices))
    {
    }

    [[nodiscard]] Result<void, HotkeyError> support() const override { return m_hotkeys->support(); }
    void choose(const KeyCombination& combination) override { m_choices.make(combination); }
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override
    {
        if (!m_choices.isMade(combination))
            return failure(HotkeyError::unchosen());
        return m_hotkeys->registerHotkey(id, combination);
    }
    [[nodiscard]] Result<void, HotkeyError> isFree(const KeyCombination& combination) override
    {
        return m_hotkeys->isFree(combination);
    }
    void setEventHandler(const EventHandler& handler) override { m_hotkeys->setEventHandler(handler); }
    void setChangeHandler(const ChangeHandler& handler) override { m_hotkeys->setChangeHandler(handler); }
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override
    {
        return m_hotkeys->symbolicHotkeys(about);
    }
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override
    {
        return m_hotkeys->display(combination);
    }
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override
    {
        return m_hotkeys->combination(key);
    }

private:
    std::shared_ptr<GlobalHotkeys> m_hotkeys;
    GnomeHotkeys::Choices m_choices;
};

} // namespace tulvane
