#include <support/XTestKeys.h>

#include <xcb/xcb.h>
#include <xcb/xinput.h>
#include <xcb/xtest.h>
// The header names a member "explicit", which C++ keeps for itself.
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace tulvane::test {

namespace {

// The X protocol counts keys from 8.
std::uint8_t keycodeOf(DeviceKey key)
{
    return static_cast<std::uint8_t>(static_cast<int>(key) + 8);
}

struct Freed {
    void operator()(void* memory) const { std::free(memory); } // NOLINT: xcb hands out malloc'ed memory
};

} // namespace

XTestKeys::XTestKeys(const QString& display, Device device)
    : m_connection(xcb_connect(display.toLocal8Bit().constData(), nullptr))
{
    if (xcb_connection_has_error(m_connection) != 0)
        throw std::runtime_error("no connection to the display");
    const auto* const xtest = xcb_get_extension_data(m_connection, &xcb_test_id);
    if (xtest == nullptr || xtest->present == 0)
        throw std::runtime_error("the display has no XTEST");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data->root;
    const auto cookie = xcb_xkb_use_extension(m_connection, 1, 0);
    const std::unique_ptr<xcb_xkb_use_extension_reply_t, Freed> used(
        xcb_xkb_use_extension_reply(m_connection, cookie, nullptr));
    findDevice(device);
    // No program holds a finger back.
    xcb_test_grab_control(m_connection, 1);
}

void XTestKeys::findDevice(Device wanted)
{
    const auto* const input = xcb_get_extension_data(m_connection, &xcb_input_id);
    if (input == nullptr || input->present == 0)
        throw std::runtime_error("the display has no XInput");
    m_firstEvent = input->first_event;
    const std::unique_ptr<xcb_input_xi_query_version_reply_t, Freed> version(xcb_input_xi_query_version_reply(
        m_connection, xcb_input_xi_query_version(m_connection, 2, 2), nullptr));
    const std::unique_ptr<xcb_input_xi_query_device_reply_t, Freed> devices(xcb_input_xi_query_device_reply(
        m_connection, xcb_input_xi_query_device(m_connection, XCB_INPUT_DEVICE_ALL), nullptr));
    if (!devices)
        throw std::runtime_error("the display does not name its devices");
    for (auto each = xcb_input_xi_query_device_infos_iterator(devices.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        if (each.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD &&
            isPosting(each.data->deviceid) == (wanted == Device::posting)) {
            m_device = static_cast<std::uint8_t>(each.data->deviceid);
            return;
        }
    }
    throw std::runtime_error("the display has no such keyboard");
}

bool XTestKeys::isPosting(std::uint16_t device) const
{
    const std::string_view name = "XTEST Device";
    const std::unique_ptr<xcb_intern_atom_reply_t, Freed> atom(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<std::uint16_t>(name.size()), name.data()),
        nullptr));
    if (!atom)
        return false;
    const std::unique_ptr<xcb_input_xi_get_property_reply_t, Freed> property(xcb_input_xi_get_property_reply(
        m_connection, xcb_input_xi_get_property(m_connection, device, 0, atom->atom, XCB_ATOM_ANY, 0, 1),
        nullptr));
    return property && property->num_items > 0;
}

XTestKeys::~XTestKeys()
{
    if (xcb_connection_has_error(m_connection) == 0) {
        for (int keycode = 0; keycode < 256; ++keycode) {
            if (m_down[keycode])
                send(XCB_KEY_RELEASE, static_cast<std::uint8_t>(keycode));
        }
        sync();
    }
    xcb_disconnect(m_connection);
}

void XTestKeys::press(DeviceKey key)
{
    send(XCB_KEY_PRESS, keycodeOf(key));
    m_down[keycodeOf(key)] = true;
    sync();
}

void XTestKeys::release(DeviceKey key)
{
    send(XCB_KEY_RELEASE, keycodeOf(key));
    m_down[keycodeOf(key)] = false;
    sync();
}

void XTestKeys::tap(DeviceKey key)
{
    press(key);
    release(key);
}

void XTestKeys::setRepeat(std::uint16_t delay, std::uint16_t interval)
{
    const std::uint8_t perKey[32] = {};
    constexpr std::uint32_t repeat = XCB_XKB_BOOL_CTRL_REPEAT_KEYS;
    xcb_xkb_set_controls(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, repeat,
                         repeat, repeat, delay, interval, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, perKey);
    sync();
}

void XTestKeys::lockGroup(std::uint8_t group)
{
    xcb_xkb_latch_lock_state(m_connection, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, group, 0, 0, 0);
    sync();
}

bool XTestKeys::grab(DeviceKey key, std::uint16_t modifiers)
{
    const auto cookie = xcb_grab_key_checked(m_connection, 0, m_root, modifiers, keycodeOf(key),
                                             XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const std::unique_ptr<xcb_generic_error_t, Freed> error(xcb_request_check(m_connection, cookie));
    return error == nullptr;
}

void XTestKeys::ungrab(DeviceKey key, std::uint16_t modifiers)
{
    xcb_ungrab_key(m_connection, keycodeOf(key), m_root, modifiers);
    sync();
}

void XTestKeys::send(std::uint8_t type, std::uint8_t detail)
{
    const bool isDown = type == XCB_KEY_PRESS;
    const int event = m_firstEvent + (isDown ? XCB_INPUT_DEVICE_KEY_PRESS : XCB_INPUT_DEVICE_KEY_RELEASE);
    xcb_test_fake_input(m_connection, static_cast<std::uint8_t>(event), detail, XCB_CURRENT_TIME,
                        XCB_WINDOW_NONE, 0, 0, m_device);
}

void XTestKeys::sync()
{
    const auto cookie = xcb_get_input_focus(m_connection);
    const std::unique_ptr<xcb_get_input_focus_reply_t, Freed> reply(
        xcb_get_input_focus_reply(m_connection, cookie, nullptr));
    while (const std::unique_ptr<xcb_generic_event_t, Freed> event{xcb_poll_for_event(m_connection)}) {
    }
}

} // namespace tulvane::test
