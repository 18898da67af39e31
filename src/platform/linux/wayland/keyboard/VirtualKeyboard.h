#pragma once

#include <platform/linux/wayland/connection/WaylandConnection.h>
#include <platform/linux/wayland/keyboard/KeyDevice.h>

#include <virtual-keyboard-unstable-v1-client.h>

#include <memory>

struct xkb_context;
struct xkb_keymap;
struct xkb_state;

namespace tulvane {

/// A keyboard of our own on a wlroots desktop, with a whole US keymap. Each keyboard has its own modifiers
/// there: what the user holds down does not join ours. Main thread.
class VirtualKeyboard final : public KeyDevice {
public:
    /// Null where the compositor has no such keyboards.
    [[nodiscard]] static std::unique_ptr<VirtualKeyboard> make(std::shared_ptr<WaylandConnection> connection);
    VirtualKeyboard(const VirtualKeyboard&) = delete;
    VirtualKeyboard& operator=(const VirtualKeyboard&) = delete;
    ~VirtualKeyboard() override;

    [[nodiscard]] bool isThere() const override { return !m_connection->isBroken(); }
    void letGo() override {}
    void press(quint32 evdev) override { key(evdev, true); }
    void release(quint32 evdev) override { key(evdev, false); }
    [[nodiscard]] bool finish() override;

private:
    struct Keymap;
    VirtualKeyboard(std::shared_ptr<WaylandConnection> connection, zwp_virtual_keyboard_manager_v1* manager);

    [[nodiscard]] bool sendKeymap();
    void key(quint32 evdev, bool isDown);

    std::shared_ptr<WaylandConnection> m_connection;
    zwp_virtual_keyboard_manager_v1* m_manager;
    zwp_virtual_keyboard_v1* m_keyboard;
    std::unique_ptr<Keymap> m_keymap;
};

} // namespace tulvane
