#pragma once

#include <platform/linux/keys/DesktopShortcuts.h>
#include <platform/linux/x11/connection/X11Connection.h>
#include <platform/linux/x11/keyboard/ServerTime.h>
#include <platform/linux/x11/keyboard/X11Grabs.h>
#include <platform/linux/x11/keyboard/X11KeyMap.h>
#include <ports/GlobalHotkeys.h>

#include <QString>

#include <map>
#include <memory>
#include <optional>

namespace tulvane {

/// Hot keys by passive grabs. A key that is held repeats as presses alone (detectable auto-repeat), so both
/// edges are told once; while it is held the server sends us every key, the release included, whatever the
/// modifiers do in between. The connection is their own: while a hot key is held the server gives its
/// connection the keyboard, and a connection that posts keys has to find out whether another one has it.
class X11Hotkeys final : public GlobalHotkeys {
public:
    /// `display` as in $DISPLAY; `folders` tells where the desktop keeps its own key combinations.
    explicit X11Hotkeys(const QString& display, DesktopFolders folders = {});
    X11Hotkeys(const X11Hotkeys&) = delete;
    X11Hotkeys& operator=(const X11Hotkeys&) = delete;
    ~X11Hotkeys() override;

    [[nodiscard]] Result<void, HotkeyError> support() const override;
    [[nodiscard]] Result<std::unique_ptr<Registration>, HotkeyError>
    registerHotkey(HotkeyId id, const KeyCombination& combination) override;
    void setEventHandler(const EventHandler& handler) override { m_eventHandler = handler; }
    void setChangeHandler(const ChangeHandler& handler) override { m_changeHandler = handler; }
    [[nodiscard]] QList<SymbolicHotkey> symbolicHotkeys(const KeyCombination& about) override;
    [[nodiscard]] KeyDisplay display(const KeyCombination& combination) const override;
    /// Of a key event's scan code and modifiers, both the server's own.
    [[nodiscard]] std::optional<KeyCombination> combination(const NativeKey& key) const override;

private:
    struct Entry {
        HotkeyId id;
        KeyCombination combination;
        X11Grab grab;
    };
    struct Table;
    class Token;

    [[nodiscard]] std::optional<X11Grab> grabOf(const KeyCombination& combination) const;
    [[nodiscard]] bool askForDetectableRepeat();
    void handleEvent(const xcb_generic_event_t& event);
    void press(const xcb_key_press_event_t& event);
    void release(const xcb_key_release_event_t& event);
    void tell(HotkeyEventKind kind, const Entry& entry, xcb_timestamp_t time);
    void followKeyboard();
    void noticeEnd();

    DesktopFolders m_folders;
    std::unique_ptr<X11Connection> m_connection; ///< null where there was no server to begin with
    std::unique_ptr<X11Connection::Token> m_listening;
    std::unique_ptr<X11KeyMap> m_keyMap;   ///< null also where the server has no XKB
    std::shared_ptr<Table> m_table;        ///< null without the key map
    std::map<xcb_keycode_t, Entry> m_held; ///< the presses that wait for their release
    EventHandler m_eventHandler;
    ChangeHandler m_changeHandler;
    bool m_isKeyMapOld = false;
    ServerTime m_time;
};

} // namespace tulvane
