#pragma once

#include <platform/linux/keys/Accelerator.h>
#include <platform/linux/keys/KeyText.h>
#include <platform/linux/sway/SwayConnection.h>
#include <ports/GlobalHotkeys.h>

#include <QTimer>

#include <list>
#include <memory>

namespace tulvane {

/// Hot keys by bindings that sway takes over its own socket, and reports on it: no process is started for a
/// press, nothing in the user's configuration changes, and sway forgets them when it reads that again; they
/// are bound anew then. A combination that the configuration binds is refused, since sway would silently
/// replace the user's own command.
///
/// Sway tells no release where another key was pressed meanwhile. The next press of the combination then ends
/// the one before it and begins none: what the user began by holding, they end by pressing again.
class SwayHotkeys final : public GlobalHotkeys {
public:
    /// What the current layout makes of keys.
    struct Layout {
        KeyLabel labelOf;
        KeyLookup keyOf;
        std::function<std::optional<KeyCombination>(const NativeKey&)> combinationOf;
        /// Sets the handler of the layout's changes.
        std::function<void(const std::function<void()>&)> setChangeHandler;
    };

    SwayHotkeys(std::shared_ptr<SwayConnection> connection, Layout layout);
    SwayHotkeys(const SwayHotkeys&) = delete;
    SwayHotkeys& operator=(const SwayHotkeys&) = delete;
    ~SwayHotkeys() override;

    [[nodiscard]] Result<void, HotkeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    [[nodiscard]] Result<void, HotkeyError> isFree(const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override { m_eventHandler = handler; }
    void setChangeHandler(const ChangeHandler& handler) override { m_changeHandler = handler; }
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override;

private:
    struct Entry;
    class Token;
    struct Table;

    void handle(SwayConnection::Event event, const QJsonObject& about);
    void edge(const QString& command);
    void tell(HotkeyEventKind kind, const Entry& entry);
    /// As soon as no key of ours is held.
    void bindAgainWhenFree();
    void bindAgain();
    /// Of the user's configuration.
    [[nodiscard]] QList<SymbolicHotkey> bindings() const;
    void noticeChange();

    std::shared_ptr<SwayConnection> m_connection;
    Layout m_layout;
    std::shared_ptr<Table> m_table;
    EventHandler m_eventHandler;
    ChangeHandler m_changeHandler;
    QTimer m_bindingDue; ///< runs while a key that is held puts off what is to be bound again
    QObject m_context;   ///< what is connected is connected while this lives
};

} // namespace tulvane
