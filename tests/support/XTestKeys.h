#pragma once

#include <QString>

#include <cstdint>

struct xcb_connection_t;

namespace tulvane::test {

/// Keys as the kernel numbers them (linux/input-event-codes.h), by position.
enum class DeviceKey : std::uint8_t {
    escape = 1,
    digit1 = 2,
    q = 16,
    a = 30,
    c = 46,
    v = 47,
    leftControl = 29,
    leftShift = 42,
    rightShift = 54,
    leftAlt = 56,
    space = 57,
    capsLock = 58,
    f5 = 63,
    f9 = 67,
    numLock = 69,
    scrollLock = 70,
    rightControl = 97,
    rightAlt = 100,
    leftSuper = 125,
    rightSuper = 126,
};

/// A keyboard: presses and releases keys at the level of the device, as a finger would, also while a program
/// has the server for itself. Each call returns when the server has taken the event in. One thread.
class XTestKeys final {
public:
    /// Whose keys: the user's own keyboard ("Xvfb keyboard"), or the one that programs post with.
    enum class Device { keyboard, posting };

    /// Throws std::runtime_error where the display cannot be opened or has no such device.
    explicit XTestKeys(const QString& display, Device device = Device::keyboard);
    XTestKeys(const XTestKeys&) = delete;
    XTestKeys& operator=(const XTestKeys&) = delete;
    /// Lets go of every key that is still down.
    ~XTestKeys();

    void press(DeviceKey key);
    void release(DeviceKey key);
    void tap(DeviceKey key);

    /// How soon and how fast the server repeats a held key, in milliseconds.
    void setRepeat(std::uint16_t delay, std::uint16_t interval);
    /// Locks a group of the layout ("us,ru" has the groups 0 and 1).
    void lockGroup(std::uint8_t group);
    /// Grabs a key for every modifier state, as another program would. False when it is taken already.
    [[nodiscard]] bool grab(DeviceKey key, std::uint16_t modifiers);
    void ungrab(DeviceKey key, std::uint16_t modifiers);

    /// The device's number, as setxkbmap's -device takes it.
    [[nodiscard]] int device() const { return m_device; }

private:
    void findDevice(Device wanted);
    [[nodiscard]] bool isPosting(std::uint16_t device) const;

    void send(std::uint8_t type, std::uint8_t detail);
    void sync();

    xcb_connection_t* m_connection;
    std::uint32_t m_root = 0;
    std::uint8_t m_device = 0;
    std::uint8_t m_firstEvent = 0; ///< of the extension with events for each device
    bool m_down[256] = {};
};

} // namespace tulvane::test
