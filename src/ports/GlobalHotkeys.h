#pragma once

#include <base/Result.h>
#include <ports/HotkeyError.h>
#include <ports/KeyCombination.h>

#include <QList>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

/// Names a registration in the events that it causes.
struct HotkeyId {
    quint32 signature = 0; ///< four characters: whose hot key it is
    quint32 id = 0;

    [[nodiscard]] friend bool operator==(const HotkeyId&, const HotkeyId&) = default;
};

/// `repeated`: the keyboard repeats a key that is held.
enum class HotkeyEventKind { pressed, released, repeated };

/// A key event that the system offers to the program.
struct HotkeyEvent {
    enum class Source {
        hotkey, ///< of a registered combination: `id` says which
        rawKey, ///< of a key that no registration caught: `combination` says which
    };

    Source source = Source::hotkey;
    HotkeyEventKind kind = HotkeyEventKind::pressed;
    HotkeyId id;
    KeyCombination combination;
    std::chrono::milliseconds age{0}; ///< how long ago it happened; a busy program handles it late
};

/// What the program made of an event; one that is not handled goes on to the next handler.
enum class HotkeyDelivery { handled, eventNotHandled };

/// A combination that the desktop itself uses.
struct SymbolicHotkey {
    bool enabled = true;
    KeyCombination combination;
    QString title; ///< what it does, where the desktop says so

    [[nodiscard]] friend bool operator==(const SymbolicHotkey&, const SymbolicHotkey&) = default;
};

/// A key as the window system reported it to a window of ours.
struct NativeKey {
    quint32 scanCode = 0;
    quint32 virtualKey = 0;
    quint32 modifiers = 0;
};

/// Key combinations that reach the program whichever program is in front. Keys are physical positions, so a
/// combination stays on its key when the keyboard layout changes. Main thread; so are all handlers.
class GlobalHotkeys {
public:
    /// A registered combination; dropping it unregisters. A press that it began still gets its release.
    class Registration {
    public:
        Registration() = default;
        Registration(const Registration&) = delete;
        Registration& operator=(const Registration&) = delete;
        virtual ~Registration() = default;
    };
    using EventHandler = std::function<HotkeyDelivery(const HotkeyEvent&)>;
    using ChangeHandler = std::function<void()>;

    GlobalHotkeys() = default;
    GlobalHotkeys(const GlobalHotkeys&) = delete;
    GlobalHotkeys& operator=(const GlobalHotkeys&) = delete;
    virtual ~GlobalHotkeys() = default;

    /// Whether this desktop has hot keys for programs at all; otherwise the reason and the remedy.
    [[nodiscard]] virtual Result<void, HotkeyError> support() const = 0;

    /// The user has just chosen this combination. A desktop that keeps hot keys in the user's own settings
    /// registers no other.
    virtual void choose(const KeyCombination& /*combination*/) {}

    /// Takes the combination, whatever Caps Lock and Num Lock are at. Both edges of the key are reported
    /// under `id`; the modifiers may go up before it or after it.
    [[nodiscard]] virtual Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) = 0;

    /// Whether `registerHotkey` would succeed now, and why not where it would not. Adapters that can ask
    /// change nothing on the desktop; by default the combination is taken for an instant, under no id of a
    /// program's.
    [[nodiscard]] virtual Result<void, HotkeyError> isFree(const KeyCombination& combination)
    {
        const auto taken = registerHotkey({}, combination);
        return taken ? Result<void, HotkeyError>() : failure(taken.error());
    }

    /// Replaces the one handler of all events.
    virtual void setEventHandler(const EventHandler& handler) = 0;

    /// Replaces the one handler that is called when registrations and names may hold no longer: another
    /// keyboard or layout, or the desktop has ended. Register again then.
    virtual void setChangeHandler(const ChangeHandler& handler) = 0;

    /// The combinations that the desktop itself uses. Where its settings cannot be read, the answer is about
    /// the given combination alone, found out by trying.
    [[nodiscard]] virtual QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) = 0;

    /// How this desktop writes the combination, with the names of the current layout.
    [[nodiscard]] virtual KeyDisplay display(const KeyCombination& combination) const = 0;

    /// The combination of a key event that a window received; none for a key that cannot be stored.
    [[nodiscard]] virtual std::optional<KeyCombination> combination(const NativeKey& key) const = 0;
};

} // namespace tulvane
