#include <base/Log.h>
#include <platform/linux/sway/SwayBindings.h>
#include <platform/linux/sway/SwayConfig.h>
#include <platform/linux/sway/SwayHotkeys.h>

#include <algorithm>

namespace tulvane {

namespace {

/// For the log: sway has no numbers of its own.
constexpr int heldAlready = 1;

} // namespace

/// A combination that is bound, or whose press still waits for its release.
struct SwayHotkeys::Entry {
    HotkeyId id;
    KeyCombination combination;
    QString name; ///< in the commands of its bindings
    bool isBound = true;
    bool isHeld = false;
    bool isReleaseIgnored = false; ///< of the press that ended the one before it
};

struct SwayHotkeys::Table {
    explicit Table(std::shared_ptr<SwayConnection> socket) : connection(std::move(socket)) {}

    [[nodiscard]] std::list<Entry>::iterator find(const QString& name)
    {
        return std::ranges::find(entries, name, &Entry::name);
    }
    void drop(const QString& name)
    {
        const auto entry = find(name);
        if (entry == entries.end())
            return;
        entry->isBound = false;
        // While it is held, the binding of the release stays for that.
        if (!entry->isHeld)
            forget(entry);
        else
            connection->run(swayBindings::unbindPress(entry->combination));
    }
    void forget(std::list<Entry>::iterator entry)
    {
        connection->run(swayBindings::unbind(entry->combination));
        entries.erase(entry);
    }

    std::shared_ptr<SwayConnection> connection;
    std::list<Entry> entries;
    int made = 0;
};

class SwayHotkeys::Token final : public Registration {
public:
    Token(const std::shared_ptr<Table>& table, QString name) : m_table(table), m_name(std::move(name)) {}
    ~Token() override
    {
        if (const auto table = m_table.lock())
            table->drop(m_name);
    }

private:
    std::weak_ptr<Table> m_table;
    QString m_name;
};

SwayHotkeys::SwayHotkeys(std::shared_ptr<SwayConnection> connection, Layout layout)
    : m_connection(std::move(connection)),
      m_layout(std::move(layout)),
      m_table(std::make_shared<Table>(m_connection))
{
    QObject::connect(m_connection.get(), &SwayConnection::happened, &m_context,
                     [this](SwayConnection::Event event, const QJsonObject& about) { handle(event, about); });
    QObject::connect(m_connection.get(), &SwayConnection::closed, &m_context, [this] { noticeChange(); });
    m_layout.setChangeHandler([this] { noticeChange(); });
}

SwayHotkeys::~SwayHotkeys()
{
    m_layout.setChangeHandler({});
    while (!m_table->entries.empty())
        m_table->forget(m_table->entries.begin());
}

Result<void, HotkeyError> SwayHotkeys::support() const
{
    if (m_connection->isBroken())
        return failure(HotkeyError::unreachable());
    return {};
}

Result<void, HotkeyError> SwayHotkeys::isFree(const KeyCombination& combination)
{
    if (const auto supported = support(); !supported)
        return failure(supported.error());
    if (!swayBindings::canBind(combination))
        return failure(HotkeyError::noSuchKey());
    for (const Entry& entry : m_table->entries) {
        if (entry.isBound && entry.combination == combination)
            return failure(HotkeyError::taken(heldAlready));
    }
    const QList<SymbolicHotkey> bound = symbolicHotkeys(combination);
    if (!bound.isEmpty())
        return failure(HotkeyError::takenBy(heldAlready, bound.last().title));
    return {};
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
SwayHotkeys::registerHotkey(HotkeyId id, const KeyCombination& combination)
{
    if (const auto free = isFree(combination); !free)
        return failure(free.error());
    const QString name = QStringLiteral("%1").arg(++m_table->made);
    if (!m_connection->run(swayBindings::bind(combination, name)))
        return failure(HotkeyError::refused(heldAlready));
    m_table->entries.push_back({.id = id, .combination = combination, .name = name});
    return std::make_unique<Token>(m_table, name);
}

void SwayHotkeys::handle(SwayConnection::Event event, const QJsonObject& about)
{
    const QString change = about.value(QLatin1StringView("change")).toString();
    if (event == SwayConnection::Event::binding)
        edge(about.value(QLatin1StringView("binding"))
                 .toObject()
                 .value(QLatin1StringView("command"))
                 .toString());
    else if (event == SwayConnection::Event::workspace && change == u"reload")
        bindAgain();
    // A binding belongs to the mode in which it was made.
    else if (event == SwayConnection::Event::mode && change == u"default")
        bindAgain();
}

void SwayHotkeys::edge(const QString& command)
{
    const auto told = swayBindings::read(command);
    const auto entry = told ? m_table->find(told->name) : m_table->entries.end();
    if (entry == m_table->entries.end())
        return;
    if (told->isPress && !entry->isHeld) {
        entry->isHeld = true;
        tell(HotkeyEventKind::pressed, Entry(*entry));
        return;
    }
    const bool isIgnored = !told->isPress && std::exchange(entry->isReleaseIgnored, false);
    if (isIgnored || !entry->isHeld)
        return;
    entry->isHeld = false;
    entry->isReleaseIgnored = told->isPress;
    const Entry ended = *entry;
    if (!ended.isBound)
        m_table->forget(entry);
    tell(HotkeyEventKind::released, ended);
}

void SwayHotkeys::tell(HotkeyEventKind kind, const Entry& entry)
{
    const EventHandler handler = m_eventHandler;
    if (handler)
        (void)handler({HotkeyEvent::Source::hotkey, kind, entry.id, entry.combination, {}});
}

void SwayHotkeys::bindAgain()
{
    for (const Entry& entry : m_table->entries) {
        if (entry.isBound)
            m_connection->run(swayBindings::bind(entry.combination, entry.name));
    }
    // The user's configuration may have another opinion of our combinations now.
    noticeChange();
}

void SwayHotkeys::noticeChange()
{
    const ChangeHandler handler = m_changeHandler;
    if (handler)
        handler();
}

QList<SymbolicHotkey> SwayHotkeys::symbolicHotkeys(const KeyCombination& about)
{
    QList<SymbolicHotkey> bound = readSwayBindings(wholeSwayConfiguration(*m_connection), m_layout.keyOf);
    bound.removeIf([&](const SymbolicHotkey& one) { return one.combination != about; });
    return bound;
}

KeyDisplay SwayHotkeys::display(const KeyCombination& combination) const
{
    return linuxKeyDisplay(combination, m_layout.labelOf);
}

std::optional<KeyCombination> SwayHotkeys::combination(const NativeKey& key) const
{
    return m_layout.combinationOf(key);
}

} // namespace tulvane
