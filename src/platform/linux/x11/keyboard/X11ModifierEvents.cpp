#include <platform/linux/x11/connection/X11Connection.h>
#include <platform/linux/x11/keyboard/OwnStrokes.h>
#include <platform/linux/x11/keyboard/ServerTime.h>
#include <platform/linux/x11/keyboard/X11KeyMap.h>
#include <platform/linux/x11/keyboard/X11ModifierEvents.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <xcb/xinput.h>

#include <set>
#include <utility>

namespace tulvane {

namespace {

/// The flag that each modifier key sets while it is held; left and right set the same one.
quint64 flagOf(quint32 virtualKey)
{
    switch (virtualKey) {
    case 54:
    case 55:
        return eventFlags::command;
    case 56:
    case 60:
        return eventFlags::shift;
    case 57:
        return eventFlags::capsLock;
    case 58:
    case 61:
        return eventFlags::option;
    case 59:
    case 62:
        return eventFlags::control;
    default:
        return 0;
    }
}

/// The major opcode of XInput where the server's version sends raw events during others' grabs; else none.
std::optional<quint8> xinputOpcode(X11Connection& connection)
{
    const auto* const extension = xcb_get_extension_data(connection.connection(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return std::nullopt;
    const auto version = xcbReply(connection.connection(), xcb_input_xi_query_version_reply,
                                  xcb_input_xi_query_version(connection.connection(), 2, 2));
    if (!version ||
        std::pair(version->major_version, version->minor_version) < std::pair<quint16, quint16>(2, 1))
        return std::nullopt;
    return extension->major_opcode;
}

class X11ModifierTap final : public ModifierEvents::Tap {
public:
    X11ModifierTap(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11KeyMap> keyMap,
                   quint8 opcode, ModifierEvents::Handler handler);

    void enable() override;
    void disable() override;

private:
    /// The number of the request; events carry the number of the last one that the server had seen.
    quint32 select(quint32 events);
    void readHeldKeys();
    void handleEvent(const xcb_generic_event_t& event);
    void change(quint32 keycode, bool isDown, std::chrono::milliseconds age);

    std::unique_ptr<X11Connection> m_connection;
    std::unique_ptr<X11Connection::Token> m_listening;
    std::unique_ptr<X11KeyMap> m_keyMap;
    quint8 m_opcode;
    ModifierEvents::Handler m_handler;
    std::set<quint32> m_held; ///< the modifier keys that are down, by virtual key code
    quint32 m_enabledAt = 0;
    bool m_isEnabled = false;
    bool m_isKeyMapOld = false;
    ServerTime m_time;
};

X11ModifierTap::X11ModifierTap(std::unique_ptr<X11Connection> connection, std::unique_ptr<X11KeyMap> keyMap,
                               quint8 opcode, ModifierEvents::Handler handler)
    : m_connection(std::move(connection)),
      m_keyMap(std::move(keyMap)),
      m_opcode(opcode),
      m_handler(std::move(handler))
{
    m_listening = m_connection->listen([this](const xcb_generic_event_t& event) { handleEvent(event); });
    QObject::connect(m_connection.get(), &X11Connection::drained, m_connection.get(), [this] {
        if (std::exchange(m_isKeyMapOld, false) && !m_connection->isBroken())
            (void)m_keyMap->reload();
    });
    QObject::connect(m_connection.get(), &X11Connection::closed, m_connection.get(), [this] {
        const ModifierEvents::Handler told = m_handler;
        told({ModifierEvent::Type::lost, 0, 0});
    });
}

void X11ModifierTap::enable()
{
    if (m_isEnabled || m_connection->isBroken())
        return;
    m_isEnabled = true;
    // Asked for first: a key that goes down in between is then known of twice rather than not at all.
    m_enabledAt = select(XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    readHeldKeys();
}

void X11ModifierTap::disable()
{
    if (!std::exchange(m_isEnabled, false) || m_connection->isBroken())
        return;
    select(0);
    m_held.clear();
}

quint32 X11ModifierTap::select(quint32 events)
{
    struct {
        xcb_input_event_mask_t head;
        quint32 mask;
    } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, events};
    const auto cookie = xcb_input_xi_select_events(m_connection->connection(), m_connection->roots().front(),
                                                   1, &selection.head);
    m_connection->flush();
    return cookie.sequence;
}

void X11ModifierTap::readHeldKeys()
{
    m_held.clear();
    const auto reply = xcbReply(m_connection->connection(), xcb_query_keymap_reply,
                                xcb_query_keymap(m_connection->connection()));
    if (!reply)
        return;
    for (const VirtualKey& key : virtualKeys::all) {
        const auto keycode = m_keyMap->keycode(key.code);
        if (key.kind == KeyKind::modifier && keycode &&
            (reply->keys[*keycode / 8] >> (*keycode % 8) & 1) != 0)
            m_held.insert(key.code);
    }
}

void X11ModifierTap::handleEvent(const xcb_generic_event_t& event)
{
    if (event.response_type != XCB_GE_GENERIC) {
        m_isKeyMapOld = m_isKeyMapOld || m_keyMap->isChange(event);
        return;
    }
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (!m_isEnabled || generic.extension != m_opcode)
        return;
    // What was on its way when the tap was last disabled is not news; the difference bears the counter's
    // wrap.
    if (static_cast<qint32>(generic.full_sequence - m_enabledAt) < 0)
        return;
    if (generic.event_type != XCB_INPUT_RAW_KEY_PRESS && generic.event_type != XCB_INPUT_RAW_KEY_RELEASE)
        return;
    const auto& key = reinterpret_cast<const xcb_input_raw_key_press_event_t&>(event);
    const bool isDown = generic.event_type == XCB_INPUT_RAW_KEY_PRESS;
    // What this program posts is nothing that the user does: a held key stays held.
    const auto age = m_time.age(key.time);
    if (!OwnStrokes::ofThisProcess().take(key.detail, isDown, std::chrono::steady_clock::now() - age))
        change(key.detail, isDown, age);
}

void X11ModifierTap::change(quint32 keycode, bool isDown, std::chrono::milliseconds age)
{
    const auto key = m_keyMap->virtualKey(keycode);
    if (!key || !virtualKeys::isModifier(*key))
        return;
    if (isDown)
        m_held.insert(*key);
    else
        m_held.erase(*key);
    quint64 flags = 0;
    for (const quint32 held : m_held)
        flags |= flagOf(held);
    // Called last and from a copy: it may destroy this tap.
    const ModifierEvents::Handler told = m_handler;
    told({ModifierEvent::Type::flagsChanged, *key, flags, age});
}

} // namespace

Result<std::unique_ptr<ModifierEvents::Tap>, ModifierEventsError>
X11ModifierEvents::createTap(qint64 keyCode, const Handler& handler)
{
    auto connection = X11Connection::open(m_display.toLocal8Bit());
    if (!connection)
        return failure(ModifierEventsError::unreachable());
    auto keyMap = X11KeyMap::load(*connection);
    const auto opcode = xinputOpcode(*connection);
    if (!keyMap || !opcode)
        return failure(ModifierEventsError::unsupported(
            translate("This X server lacks the extensions (XKB, XInput 2.1) that watching a key needs.")));
    // fn lies beyond the key codes that X11 has room for, and other keyboards lack other keys.
    if (!std::in_range<quint32>(keyCode) || !keyMap->keycode(static_cast<quint32>(keyCode))) {
        const VirtualKey* const key = virtualKeys::byCode(static_cast<quint64>(keyCode));
        return failure(ModifierEventsError::keyNotSeen(key != nullptr ? QString::fromUtf8(key->name)
                                                                      : QString::number(keyCode)));
    }
    return std::make_unique<X11ModifierTap>(std::move(connection), std::move(keyMap), *opcode, handler);
}

} // namespace tulvane
