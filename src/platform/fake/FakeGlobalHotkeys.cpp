#include <platform/fake/FakeGlobalHotkeys.h>
#include <ports/KeyModifiers.h>
#include <ports/VirtualKeys.h>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

constexpr int takenCode = -9878;

} // namespace

class FakeGlobalHotkeys::Token final : public Registration {
public:
    Token(const std::shared_ptr<std::map<int, Entry>>& entries, int number)
        : m_entries(entries),
          m_number(number)
    {
    }
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    ~Token() override
    {
        if (const auto entries = m_entries.lock())
            entries->erase(m_number);
    }

private:
    std::weak_ptr<std::map<int, Entry>> m_entries;
    int m_number;
};

Result<void, HotkeyError> FakeGlobalHotkeys::support() const
{
    if (m_error && m_error->kind() == HotkeyError::Kind::unsupported)
        return failure(*m_error);
    return {};
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
FakeGlobalHotkeys::registerHotkey(HotkeyId id, const KeyCombination& combination)
{
    const int number = ++m_attempts;
    if (m_error)
        return failure(*m_error);
    if (virtualKeys::byCode(combination.keyCode) == nullptr)
        return failure(HotkeyError::noSuchKey());
    if (m_elsewhere.contains(combination) || isRegistered(combination))
        return failure(HotkeyError::taken(takenCode));
    m_entries->emplace(number, Entry{id, combination});
    return std::make_unique<Token>(m_entries, number);
}

QList<SymbolicHotkey> FakeGlobalHotkeys::symbolicHotkeys(const KeyCombination& about)
{
    QList<SymbolicHotkey> hotkeys = m_symbolic;
    if (m_elsewhere.contains(about) && hotkeys.isEmpty())
        hotkeys.append({true, about, {}});
    return hotkeys;
}

void FakeGlobalHotkeys::setDisplay(const std::function<KeyDisplay(const KeyCombination&)>& display)
{
    m_display = display;
    changeKeyboard();
}

KeyDisplay FakeGlobalHotkeys::display(const KeyCombination& combination) const
{
    if (m_display)
        return m_display(combination);
    constexpr std::array symbols{std::pair{carbon::control, u'⌃'}, std::pair{carbon::option, u'⌥'},
                                 std::pair{carbon::shift, u'⇧'}, std::pair{carbon::command, u'⌘'}};
    KeyDisplay display;
    for (const auto& [modifier, symbol] : symbols) {
        if ((combination.modifiers & modifier) != 0)
            display.caps.append(QString(QChar(symbol)));
    }
    const VirtualKey* const key = virtualKeys::byCode(combination.keyCode);
    display.caps.append(key == nullptr ? QString() : QString::fromUtf8(key->name));
    return display;
}

std::optional<KeyCombination> FakeGlobalHotkeys::combination(const NativeKey& key) const
{
    if (virtualKeys::byCode(key.virtualKey) == nullptr)
        return std::nullopt;
    return KeyCombination{key.virtualKey, carbonModifiers(key.modifiers)};
}

void FakeGlobalHotkeys::press(const KeyCombination& combination)
{
    const auto held = m_held.find(combination.keyCode);
    if (held != m_held.end()) {
        repeat(combination);
        return;
    }
    const auto found = std::ranges::find_if(
        *m_entries, [&](const auto& entry) { return entry.second.combination == combination; });
    if (found == m_entries->end())
        return;
    m_held.emplace(combination.keyCode, found->second.id);
    deliver({HotkeyEvent::Source::hotkey, HotkeyEventKind::pressed, found->second.id, combination});
}

void FakeGlobalHotkeys::release(const KeyCombination& combination)
{
    const auto held = m_held.find(combination.keyCode);
    if (held == m_held.end())
        return;
    const HotkeyId id = held->second;
    m_held.erase(held);
    deliver({HotkeyEvent::Source::hotkey, HotkeyEventKind::released, id, combination});
}

void FakeGlobalHotkeys::repeat(const KeyCombination& combination)
{
    const auto held = m_held.find(combination.keyCode);
    if (held != m_held.end())
        deliver({HotkeyEvent::Source::hotkey, HotkeyEventKind::repeated, held->second, combination});
}

HotkeyDelivery FakeGlobalHotkeys::deliver(const HotkeyEvent& event)
{
    return m_eventHandler ? m_eventHandler(event) : HotkeyDelivery::eventNotHandled;
}

void FakeGlobalHotkeys::changeKeyboard()
{
    if (m_changeHandler)
        m_changeHandler();
}

QList<std::pair<HotkeyId, KeyCombination>> FakeGlobalHotkeys::registered() const
{
    QList<std::pair<HotkeyId, KeyCombination>> result;
    for (const auto& [number, entry] : *m_entries)
        result.append({entry.id, entry.combination});
    return result;
}

bool FakeGlobalHotkeys::isRegistered(const KeyCombination& combination) const
{
    return std::ranges::any_of(*m_entries,
                               [&](const auto& entry) { return entry.second.combination == combination; });
}

} // namespace tulvane
