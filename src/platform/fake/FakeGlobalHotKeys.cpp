#include <platform/KeyModifiers.h>
#include <platform/VirtualKeys.h>
#include <platform/fake/FakeGlobalHotKeys.h>

#include <algorithm>
#include <array>

namespace tulvane {

namespace {

constexpr int takenCode = -9878;

} // namespace

class FakeGlobalHotKeys::Token final : public Registration {
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

Result<void, HotKeyError> FakeGlobalHotKeys::support() const
{
    if (m_error && m_error->kind() == HotKeyError::Kind::unsupported)
        return failure(*m_error);
    return {};
}

Result<std::unique_ptr<GlobalHotKeys::Registration>, HotKeyError>
FakeGlobalHotKeys::registerHotKey(HotKeyId id, const KeyCombination& combination)
{
    const int number = ++m_attempts;
    if (m_error)
        return failure(*m_error);
    if (virtualKeys::byCode(combination.keyCode) == nullptr)
        return failure(HotKeyError::noSuchKey());
    if (m_elsewhere.contains(combination) || isRegistered(combination))
        return failure(HotKeyError::taken(takenCode));
    m_entries->emplace(number, Entry{id, combination});
    return std::make_unique<Token>(m_entries, number);
}

QList<SymbolicHotKey> FakeGlobalHotKeys::symbolicHotKeys(const KeyCombination& about)
{
    QList<SymbolicHotKey> hotKeys = m_symbolic;
    if (m_elsewhere.contains(about) && hotKeys.isEmpty())
        hotKeys.append({true, about, {}});
    return hotKeys;
}

KeyDisplay FakeGlobalHotKeys::display(const KeyCombination& combination) const
{
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

std::optional<KeyCombination> FakeGlobalHotKeys::combination(const NativeKey& key) const
{
    if (virtualKeys::byCode(key.virtualKey) == nullptr)
        return std::nullopt;
    return KeyCombination{key.virtualKey, carbonModifiers(key.modifiers)};
}

void FakeGlobalHotKeys::press(const KeyCombination& combination)
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
    deliver({HotKeyEvent::Source::hotKey, HotKeyEventKind::pressed, found->second.id, combination});
}

void FakeGlobalHotKeys::release(const KeyCombination& combination)
{
    const auto held = m_held.find(combination.keyCode);
    if (held == m_held.end())
        return;
    const HotKeyId id = held->second;
    m_held.erase(held);
    deliver({HotKeyEvent::Source::hotKey, HotKeyEventKind::released, id, combination});
}

void FakeGlobalHotKeys::repeat(const KeyCombination& combination)
{
    const auto held = m_held.find(combination.keyCode);
    if (held != m_held.end())
        deliver({HotKeyEvent::Source::hotKey, HotKeyEventKind::repeated, held->second, combination});
}

HotKeyDelivery FakeGlobalHotKeys::deliver(const HotKeyEvent& event)
{
    return m_eventHandler ? m_eventHandler(event) : HotKeyDelivery::eventNotHandled;
}

void FakeGlobalHotKeys::changeKeyboard()
{
    if (m_changeHandler)
        m_changeHandler();
}

QList<std::pair<HotKeyId, KeyCombination>> FakeGlobalHotKeys::registered() const
{
    QList<std::pair<HotKeyId, KeyCombination>> result;
    for (const auto& [number, entry] : *m_entries)
        result.append({entry.id, entry.combination});
    return result;
}

bool FakeGlobalHotKeys::isRegistered(const KeyCombination& combination) const
{
    return std::ranges::any_of(*m_entries,
                               [&](const auto& entry) { return entry.second.combination == combination; });
}

} // namespace tulvane
