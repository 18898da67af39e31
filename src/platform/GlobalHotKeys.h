#pragma once

#include <base/Result.h>
#include <platform/HotKeyError.h>
#include <platform/KeyCombination.h>

#include <QList>

#include <functional>
#include <memory>
#include <optional>

namespace tulvane {

/// Names a registration in the events that it causes.
struct HotKeyId {
    quint32 signature = 0; ///< four characters: whose hot key it is
    quint32 id = 0;

    [[nodiscard]] friend bool operator==(const HotKeyId&, const HotKeyId&) = default;
};

/// `repeated`: the keyboard repeats a key that is held.
enum class HotKeyEventKind { pressed, released, repeated };

/// A key event that the system offers to the program.
struct HotKeyEvent {
    enum class Source {
        hotKey, ///< of a registered combination: `id` says which
        rawKey, ///< of a key that no registration caught: `combination` says which
    };

    Source source = Source::hotKey;
    HotKeyEventKind kind = HotKeyEventKind::pressed;
    HotKeyId id;
    KeyCombination combination;
};

/// What the program made of an event; one that is not handled goes on to whoever is next.
enum class HotKeyDelivery { handled, eventNotHandled };

/// A combination that the desktop itself uses.
struct SymbolicHotKey {
    bool enabled = true;
    KeyCombination combination;
    QString title; ///< what it does, where the desktop says so

    [[nodiscard]] friend bool operator==(const SymbolicHotKey&, const SymbolicHotKey&) = default;
};

/// A key as the window system reported it to a window of ours.
struct NativeKey {
    quint32 scanCode = 0;
    quint32 virtualKey = 0;
    quint32 modifiers = 0;
};

/// Key combinations that reach the program whichever program is in front. Keys are physical positions, so a
/// combination stays on its key when the keyboard layout changes. Main thread; so are all handlers.
class GlobalHotKeys {
public:
    /// A registered combination; dropping it unregisters. A press that it began still gets its release.
    class Registration {
    public:
        Registration() = default;
        Registration(const Registration&) = delete;
        Registration& operator=(const Registration&) = delete;
        virtual ~Registration() = default;
    };
    using EventHandler = std::function<HotKeyDelivery(const HotKeyEvent&)>;
    using ChangeHandler = std::function<void()>;

    GlobalHotKeys() = default;
    GlobalHotKeys(const GlobalHotKeys&) = delete;
    GlobalHotKeys& operator=(const GlobalHotKeys&) = delete;
    virtual ~GlobalHotKeys() = default;

    /// Whether this desktop has hot keys for programs at all; otherwise the reason and the remedy.
    [[nodiscard]] virtual Result<void, HotKeyError> support() const = 0;

    /// Takes the combination, whatever Caps Lock and Num Lock are at. Both edges of the key are reported
    /// under `id`; the modifiers may go up before it or after it.
    [[nodiscard]] virtual Result<std::unique_ptr<Registration>, HotKeyError>
    registerHotKey(HotKeyId id, const KeyCombination& combination) = 0;

    /// Replaces the one handler of all events.
    virtual void setEventHandler(const EventHandler& handler) = 0;

    /// Replaces the one handler that hears that registrations and names may hold no longer: another keyboard
    /// or layout, or the desktop has ended. Register again then.
    virtual void setChangeHandler(const ChangeHandler& handler) = 0;

    /// The combinations that the desktop itself uses. Where its settings cannot be read, the answer is about
    /// the given combination alone, found out by trying.
    [[nodiscard]] virtual QList<SymbolicHotKey> symbolicHotKeys(const KeyCombination& about) = 0;

    /// How this desktop writes the combination, with the names of the current layout.
    [[nodiscard]] virtual KeyDisplay display(const KeyCombination& combination) const = 0;

    /// The combination that a window was told of; none for a key that cannot be stored.
    [[nodiscard]] virtual std::optional<KeyCombination> combination(const NativeKey& key) const = 0;
};

} // namespace tulvane
