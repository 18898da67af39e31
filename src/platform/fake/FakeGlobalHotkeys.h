#pragma once

#include <ports/GlobalHotkeys.h>

#include <QList>

#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace tulvane {

/// Hot keys without a keyboard: the test presses them. Names and forms are those of a Mac, unless the test
/// says otherwise.
class FakeGlobalHotkeys final : public GlobalHotkeys {
public:
    [[nodiscard]] Result<void, HotkeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override { m_eventHandler = handler; }
    void setChangeHandler(const ChangeHandler& handler) override { m_changeHandler = handler; }
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override;
    void choose(const KeyCombination& combination) override { m_chosen.append(combination); }

    /// A finger on the keyboard: the key goes down or up, or repeats, with these modifiers held. Reaches the
    /// program only where the combination is registered, or a press of it was.
    void press(const KeyCombination& combination);
    void release(const KeyCombination& combination);
    void repeat(const KeyCombination& combination);
    /// Offers the program an event, whatever is registered.
    HotkeyDelivery deliver(const HotkeyEvent& event);

    /// Another program takes the combination, or gives it back.
    void takeElsewhere(const KeyCombination& combination) { m_elsewhere.append(combination); }
    void freeElsewhere(const KeyCombination& combination) { m_elsewhere.removeAll(combination); }
    /// From now on every registration fails with the error; without one, they succeed again.
    void failRegistrations(const std::optional<HotkeyError>& error) { m_error = error; }
    /// The keyboard or its layout has changed.
    void changeKeyboard();
    /// The keys are written so from now on.
    void setDisplay(const std::function<KeyDisplay(const KeyCombination&)>& display);
    void setSymbolicHotkeys(const QList<SymbolicHotkey>& hotkeys) { m_symbolic = hotkeys; }

    /// What is registered now, by id.
    [[nodiscard]] QList<std::pair<HotkeyId, KeyCombination>> registered() const;
    [[nodiscard]] bool isRegistered(const KeyCombination& combination) const;
    /// How many registrations were asked for, failed ones included.
    [[nodiscard]] int attempts() const { return m_attempts; }
    /// What the user has chosen, the latest last.
    [[nodiscard]] QList<KeyCombination> chosen() const { return m_chosen; }

private:
    struct Entry {
        HotkeyId id;
        KeyCombination combination;
    };
    class Token;

    std::shared_ptr<std::map<int, Entry>> m_entries = std::make_shared<std::map<int, Entry>>();
    std::map<quint32, HotkeyId> m_held; ///< the presses that wait for their release, by key
    QList<KeyCombination> m_elsewhere;
    QList<KeyCombination> m_chosen;
    QList<SymbolicHotkey> m_symbolic;
    std::function<KeyDisplay(const KeyCombination&)> m_display;
    std::optional<HotkeyError> m_error;
    EventHandler m_eventHandler;
    ChangeHandler m_changeHandler;
    int m_attempts = 0;
};

} // namespace tulvane
