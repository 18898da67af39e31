#include <platform/linux/x11/keyboard/KeyboardDevices.h>

#include <xcb/xinput.h>
#include <xkbcommon/xkbcommon-x11.h>

#include <limits>
#include <utility>

namespace tulvane {

namespace {

constexpr unsigned firstKey = 8; // X11's lowest key code

/// Whether the server has marked each as one that programs post with.
QList<bool> arePosting(X11Connection& link, const QList<quint16>& devices)
{
    xcb_connection_t* const connection = link.connection();
    const xcb_atom_t mark = link.atom(QStringLiteral("XTEST Device"));
    QList<xcb_input_xi_get_property_cookie_t> cookies;
    for (const quint16 device : devices)
        cookies.append(xcb_input_xi_get_property(connection, device, 0, mark, XCB_ATOM_ANY, 0, 1));
    QList<bool> answers;
    for (const auto cookie : cookies) {
        const auto reply = xcbReply(connection, xcb_input_xi_get_property_reply, cookie);
        answers.append(reply && reply->num_items > 0);
    }
    return answers;
}

/// The devices that feed this one.
QList<quint16> partsOf(X11Connection& link, qint32 keyboard)
{
    QList<quint16> parts;
    const auto reply = xcbReply(link.connection(), xcb_input_xi_query_device_reply,
                                xcb_input_xi_query_device(link.connection(), XCB_INPUT_DEVICE_ALL));
    if (!reply)
        return parts;
    for (auto each = xcb_input_xi_query_device_infos_iterator(reply.get()); each.rem > 0;
         xcb_input_xi_device_info_next(&each)) {
        if (each.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD && each.data->attachment == keyboard)
            parts.append(each.data->deviceid);
    }
    return parts;
}

void appendDown(QList<HeldKey>& held, quint8 device, const xcb_input_query_device_state_reply_t& state)
{
    for (auto each = xcb_input_query_device_state_classes_iterator(&state); each.rem > 0;
         xcb_input_input_state_next(&each)) {
        if (each.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
            continue;
        const auto* const keys = reinterpret_cast<const xcb_input_key_state_t*>(each.data);
        for (unsigned key = firstKey; key <= std::numeric_limits<xcb_keycode_t>::max(); ++key) {
            if ((keys->keys[key / 8] >> (key % 8) & 1U) != 0)
                held.append({device, static_cast<xcb_keycode_t>(key)});
        }
    }
}

} // namespace

KeyboardDevices KeyboardDevices::current(X11Connection& link)
{
    KeyboardDevices devices;
    devices.posting = xkb_x11_get_core_keyboard_device_id(link.connection());
    const auto* const extension = xcb_get_extension_data(link.connection(), &xcb_input_id);
    if (devices.posting < 0 || extension == nullptr || extension->present == 0)
        return devices;
    const QList<quint16> parts = partsOf(link, devices.posting);
    const QList<bool> posting = arePosting(link, parts);
    for (qsizetype index = 0; index < parts.size(); ++index) {
        if (posting[index]) {
            devices.posting = parts[index];
            devices.isPostingKnown = true;
        } else if (std::in_range<quint8>(parts[index])) {
            devices.users.append(static_cast<quint8>(parts[index]));
        }
    }
    return devices;
}

QList<quint8> KeyboardDevices::postingDevices() const
{
    return isPostingKnown && std::in_range<quint8>(posting) ? QList{static_cast<quint8>(posting)}
                                                            : QList<quint8>();
}

QList<HeldKey> heldKeys(X11Connection& link, const QList<quint8>& devices)
{
    QList<xcb_input_query_device_state_cookie_t> cookies;
    for (const quint8 device : devices)
        cookies.append(xcb_input_query_device_state(link.connection(), device));
    QList<HeldKey> held;
    for (qsizetype index = 0; index < devices.size(); ++index) {
        if (const auto state =
                xcbReply(link.connection(), xcb_input_query_device_state_reply, cookies[index]))
            appendDown(held, devices[index], *state);
    }
    return held;
}

} // namespace tulvane
