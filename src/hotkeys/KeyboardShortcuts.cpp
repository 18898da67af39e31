#include <base/Log.h>
#include <base/Translate.h>
#include <hotkeys/KeyboardShortcuts.h>
#include <hotkeys/MainThread.h>
#include <hotkeys/PasteCombinations.h>
#include <ports/KeyModifiers.h>
#include <ports/UserDefaults.h>

#include <algorithm>

namespace tulvane {

namespace {

QString storageKey(const QString& rawName)
{
    return KeyboardShortcuts::storagePrefix + rawName;
}

/// A bit that is no modifier would fall away and leave a bare key, which no program could receive any more.
bool hasUnknownModifiers(const KeyCombination& combination)
{
    return (combination.modifiers & ~carbon::all) != 0;
}

void logFailure(const Shortcut& shortcut, const HotkeyError& error)
{
    qCCritical(lcHotkey, "Error registering hotkey key code %lld, modifiers %lld: %d (kind %d)",
               shortcut.carbonKeyCode, shortcut.carbonModifiers, error.code(),
               static_cast<int>(error.kind()));
}

} // namespace

KeyboardShortcuts::KeyboardShortcuts(UserDefaults& defaults, GlobalHotkeys& hotkeys, QObject* parent)
    : QObject(parent),
      m_defaults(defaults),
      m_hotkeys(hotkeys)
{
    m_hotkeys.setEventHandler([this](const HotkeyEvent& event) { return deliver(event); });
    m_hotkeys.setChangeHandler([this] { registerAll(); });
}

KeyboardShortcuts::~KeyboardShortcuts()
{
    m_hotkeys.setEventHandler({});
    m_hotkeys.setChangeHandler({});
}

void KeyboardShortcuts::declare(const ShortcutName& name)
{
    if (std::ranges::find(m_declared, name.rawName) != m_declared.end())
        return;
    m_declared.push_back(name.rawName);
    if (name.defaultShortcut && !m_defaults.contains(storageKey(name.rawName)))
        write(name.rawName, name.defaultShortcut->toJson());
    registerAll();
}

std::optional<Shortcut> KeyboardShortcuts::getShortcut(const ShortcutName& name) const
{
    const QVariant stored = m_defaults.value(storageKey(name.rawName));
    if (stored.typeId() != QMetaType::QString)
        return std::nullopt;
    return Shortcut::fromJson(stored.toString());
}

void KeyboardShortcuts::setShortcut(const std::optional<Shortcut>& shortcut, const ShortcutName& name)
{
    if (shortcut)
        write(name.rawName, shortcut->toJson());
    else if (name.defaultShortcut)
        write(name.rawName, false); // tells "cleared" from "never set", which would bring the default back
    else
        write(name.rawName, QVariant());
    Q_EMIT posted(shortcutByNameDidChange, {{QStringLiteral("name"), name.rawName}});
    if (const auto combination = shortcut ? shortcut->combination() : std::nullopt)
        m_hotkeys.choose(*combination);
    registerAll();
}

void KeyboardShortcuts::onKeyDown(const ShortcutName& name, const Handler& handler)
{
    attach(name, &Entry::keyDown, handler);
}

void KeyboardShortcuts::onKeyUp(const ShortcutName& name, const Handler& handler)
{
    attach(name, &Entry::keyUp, handler);
}

void KeyboardShortcuts::attach(const ShortcutName& name, std::vector<Handler> Entry::* list,
                               const Handler& handler)
{
    (entryOf(name).*list).push_back(handler);
    const Entry* const entry = find(name);
    if (entry->registration == nullptr && !entry->error)
        registerAll();
}

RegistrationState KeyboardShortcuts::registration(const ShortcutName& name) const
{
    using Kind = RegistrationState::Kind;
    if (!getShortcut(name))
        return {Kind::noShortcut, {}};
    const Entry* const entry = find(name);
    if (entry == nullptr)
        return {Kind::unused, {}};
    if (m_recorderActive)
        return {Kind::paused, {}};
    if (entry->error)
        return {Kind::failed, entry->error};
    return {Kind::registered, {}};
}

KeyDisplay KeyboardShortcuts::display(const ShortcutName& name) const
{
    const auto shortcut = getShortcut(name);
    if (!shortcut)
        return {};
    const auto combination = shortcut->combination();
    if (combination && !hasUnknownModifiers(*combination))
        return m_hotkeys.display(*combination);
    return {{translate("Key %1").arg(shortcut->carbonKeyCode)}, {}};
}

void KeyboardShortcuts::registerAgain()
{
    registerAll();
}

void KeyboardShortcuts::setRecorderActive(bool isActive)
{
    if (m_recorderActive == isActive)
        return;
    m_recorderActive = isActive;
    Q_EMIT posted(recorderActiveStatusDidChange, {{QStringLiteral("isActive"), isActive}});
    registerAll();
}

KeyboardShortcuts::Entry& KeyboardShortcuts::entryOf(const ShortcutName& name)
{
    for (auto& [id, entry] : m_table) {
        if (entry.rawName == name.rawName)
            return entry;
    }
    const quint32 id = static_cast<quint32>(m_table.size()) + 1;
    Entry& entry = m_table[id];
    entry.rawName = name.rawName;
    return entry;
}

const KeyboardShortcuts::Entry* KeyboardShortcuts::find(const ShortcutName& name) const
{
    const auto found =
        std::ranges::find_if(m_table, [&](const auto& item) { return item.second.rawName == name.rawName; });
    return found == m_table.end() ? nullptr : &found->second;
}

void KeyboardShortcuts::write(const QString& rawName, const QVariant& value)
{
    const QString key = storageKey(rawName);
    const auto written = value.isValid() ? m_defaults.set(key, value) : m_defaults.remove(key);
    if (written)
        return;
    qCCritical(lcHotkey, "Could not store the shortcut %ls", qUtf16Printable(rawName));
    Q_EMIT writeFailed(rawName, written.error());
}

void KeyboardShortcuts::registerAll()
{
    for (auto& [id, entry] : m_table) {
        entry.registration.reset();
        entry.error.reset();
        entry.combination.reset();
    }
    if (!m_recorderActive) {
        for (auto& [id, entry] : m_table)
            registerEntry(id, entry);
    }
    Q_EMIT registrationsChanged();
}

void KeyboardShortcuts::registerEntry(quint32 id, Entry& entry)
{
    const auto shortcut = getShortcut(ShortcutName{entry.rawName, {}});
    if (!shortcut)
        return;
    entry.combination = shortcut->combination();
    auto registration = take(id, entry.combination);
    if (registration) {
        entry.registration = std::move(*registration);
        return;
    }
    entry.error = registration.error();
    logFailure(*shortcut, registration.error());
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
KeyboardShortcuts::take(quint32 id, const std::optional<KeyCombination>& combination)
{
    if (!combination || hasUnknownModifiers(*combination))
        return failure(HotkeyError::outOfRange());
    // It may have been stored before it was refused, or on another keyboard layout.
    if (isUsedForPasting(m_hotkeys, *combination))
        return failure(HotkeyError::pastes());
    return m_hotkeys.registerHotkey({signature, id}, *combination);
}

HotkeyDelivery KeyboardShortcuts::deliver(const HotkeyEvent& event)
{
    requireMainThread("KeyboardShortcuts::deliver");
    const Entry* const entry = target(event);
    if (entry == nullptr || event.kind == HotkeyEventKind::repeated)
        return HotkeyDelivery::eventNotHandled;
    m_eventAge = event.age;
    // A handler may change shortcuts, and so the table.
    const std::vector<Handler> handlers =
        event.kind == HotkeyEventKind::pressed ? entry->keyDown : entry->keyUp;
    for (const Handler& handler : handlers)
        handler();
    return HotkeyDelivery::handled;
}

const KeyboardShortcuts::Entry* KeyboardShortcuts::target(const HotkeyEvent& event) const
{
    if (event.source == HotkeyEvent::Source::hotkey) {
        const auto found = m_table.find(event.id.id);
        return event.id.signature == signature && found != m_table.end() ? &found->second : nullptr;
    }
    const auto found = std::ranges::find_if(
        m_table, [&](const auto& item) { return item.second.combination == event.combination; });
    return found == m_table.end() ? nullptr : &found->second;
}

} // namespace tulvane
