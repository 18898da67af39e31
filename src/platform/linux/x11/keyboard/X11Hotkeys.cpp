#include <platform/linux/keys/KeyText.h>
#include <platform/linux/x11/connection/XkbProtocol.h>
#include <platform/linux/x11/keyboard/X11Hotkeys.h>
#include <platform/linux/x11/keyboard/X11WindowManager.h>

#include <algorithm>
#include <list>
#include <utility>

namespace tulvane {

/// What is registered. Tokens may outlive the adapter, so they know of it weakly.
struct X11Hotkeys::Table {
    explicit Table(X11Connection& connection) : grabs(connection) {}

    X11Grabs grabs;
    std::list<Entry> entries;
};

class X11Hotkeys::Token final : public Registration {
public:
    Token(const std::shared_ptr<Table>& table, std::list<Entry>::iterator entry)
        : m_table(table),
          m_entry(entry)
    {
    }
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    ~Token() override
    {
        if (const auto table = m_table.lock()) {
            table->grabs.release(m_entry->grab);
            table->entries.erase(m_entry);
        }
    }

private:
    std::weak_ptr<Table> m_table;
    std::list<Entry>::iterator m_entry;
};

X11Hotkeys::X11Hotkeys(const QString& display, DesktopFolders folders)
    : m_folders(std::move(folders)),
      m_connection(X11Connection::open(display.toLocal8Bit()))
{
    if (!m_connection)
        return;
    m_keyMap = X11KeyMap::load(*m_connection);
    if (m_keyMap && !askForDetectableRepeat())
        m_keyMap.reset();
    if (m_keyMap)
        m_table = std::make_shared<Table>(*m_connection);
    m_listening = m_connection->listen([this](const xcb_generic_event_t& event) { handleEvent(event); });
    QObject::connect(m_connection.get(), &X11Connection::drained, m_connection.get(),
                     [this] { followKeyboard(); });
    QObject::connect(m_connection.get(), &X11Connection::closed, m_connection.get(), [this] { noticeEnd(); });
}

X11Hotkeys::~X11Hotkeys() = default;

bool X11Hotkeys::askForDetectableRepeat()
{
    constexpr quint32 detectable = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto reply = xcbReply(m_connection->connection(), xcb_xkb_per_client_flags_reply,
                                xcb_xkb_per_client_flags(m_connection->connection(), XCB_XKB_ID_USE_CORE_KBD,
                                                         detectable, detectable, 0, 0, 0));
    return reply && (reply->value & detectable) != 0;
}

Result<void, HotkeyError> X11Hotkeys::support() const
{
    if (!m_connection || m_connection->isBroken())
        return failure(HotkeyError::unreachable());
    if (!m_keyMap)
        return failure(HotkeyError::unsupported(
            translate("This X server lacks the keyboard extension (XKB) that hotkeys need.")));
    return {};
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
X11Hotkeys::registerHotkey(HotkeyId id, const KeyCombination& combination)
{
    if (const auto supported = support(); !supported)
        return failure(supported.error());
    const auto grab = grabOf(combination);
    if (!grab)
        return failure(HotkeyError::noSuchKey());
    if (const auto taken = m_table->grabs.take(*grab); !taken)
        return failure(taken.error());
    m_table->entries.push_front({id, combination, *grab});
    return std::make_unique<Token>(m_table, m_table->entries.begin());
}

std::optional<X11Grab> X11Hotkeys::grabOf(const KeyCombination& combination) const
{
    const auto keycode = m_keyMap->keycode(combination.keyCode);
    const auto mask = m_keyMap->modifiers().mask(combination.modifiers);
    if (!keycode || !mask)
        return std::nullopt;
    return X11Grab{*keycode, *mask, m_keyMap->modifiers().lockVariants()};
}

void X11Hotkeys::handleEvent(const xcb_generic_event_t& event)
{
    switch (event.response_type) {
    case XCB_KEY_PRESS:
        press(reinterpret_cast<const xcb_key_press_event_t&>(event));
        break;
    case XCB_KEY_RELEASE:
        release(reinterpret_cast<const xcb_key_release_event_t&>(event));
        break;
    default:
        m_isKeyMapOld = m_isKeyMapOld || (m_keyMap && m_keyMap->isChange(event));
        break;
    }
}

void X11Hotkeys::press(const xcb_key_press_event_t& event)
{
    if (const auto held = m_held.find(event.detail); held != m_held.end()) {
        tell(HotkeyEventKind::repeated, Entry(held->second), event.time);
        return;
    }
    // While one hot key is held, every other key comes to us as well; most are none of ours.
    const quint16 modifiers = m_keyMap->modifiers().withoutLocks(event.state);
    const auto found = std::ranges::find_if(m_table->entries, [&](const Entry& entry) {
        return entry.grab.keycode == event.detail && entry.grab.modifiers == modifiers;
    });
    if (found == m_table->entries.end())
        return;
    const Entry entry = *found;
    m_held.emplace(event.detail, entry);
    tell(HotkeyEventKind::pressed, entry, event.time);
}

void X11Hotkeys::release(const xcb_key_release_event_t& event)
{
    // By the key alone: the modifiers may have been let go of before it, and the registration may be gone.
    const auto held = m_held.extract(event.detail);
    if (!held.empty())
        tell(HotkeyEventKind::released, held.mapped(), event.time);
}

void X11Hotkeys::tell(HotkeyEventKind kind, const Entry& entry, xcb_timestamp_t time)
{
    const auto age = m_time.age(time);
    const EventHandler handler = m_eventHandler;
    if (handler)
        (void)handler({HotkeyEvent::Source::hotkey, kind, entry.id, entry.combination, age});
}

void X11Hotkeys::followKeyboard()
{
    // One change of the layout comes as many events, and most change nothing that matters here.
    if (!std::exchange(m_isKeyMapOld, false) || m_connection->isBroken() || !m_keyMap->reload())
        return;
    const ChangeHandler handler = m_changeHandler;
    if (handler)
        handler();
}

void X11Hotkeys::noticeEnd()
{
    m_held.clear();
    const ChangeHandler handler = m_changeHandler;
    if (handler)
        handler();
}

QList<SymbolicHotkey> X11Hotkeys::symbolicHotkeys(const KeyCombination& about)
{
    if (!support())
        return {};
    const auto keyOf = [this](const QString& keysym) { return m_keyMap->keyForKeysym(keysym); };
    if (auto stored = readDesktopShortcuts(m_folders, windowManagerName(*m_connection), keyOf))
        return *stored;
    const auto grab = grabOf(about);
    return grab && m_table->grabs.isTaken(*grab) ? QList<SymbolicHotkey>{{true, about, {}}}
                                                 : QList<SymbolicHotkey>{};
}

KeyDisplay X11Hotkeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(combination, [this](const VirtualKey& key) {
        return m_keyMap ? m_keyMap->label(key.code) : QString();
    });
}

std::optional<KeyCombination> X11Hotkeys::combination(const NativeKey& key) const
{
    const auto virtualKey = m_keyMap ? m_keyMap->virtualKey(key.scanCode) : std::nullopt;
    if (!virtualKey)
        return std::nullopt;
    return KeyCombination{*virtualKey, m_keyMap->modifiers().carbonModifiers(key.modifiers)};
}

} // namespace tulvane
