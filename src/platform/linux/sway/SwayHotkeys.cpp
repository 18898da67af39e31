#include <base/Log.h>
#include <platform/linux/sway/SwayBindings.h>
#include <platform/linux/sway/SwayConfig.h>
#include <platform/linux/sway/SwayHotkeys.h>

#include <QTimer>

#include <algorithm>

namespace tulvane {

namespace {

/// For the log: sway has no numbers of its own.
constexpr int heldAlready = 1;
/// A release that has not come so long after a reload, in milliseconds, will not come.
constexpr int releaseLimit = 10'000;

} // namespace

/// A combination that is registered, or whose press still waits for its release.
struct SwayHotkeys::Entry {
    HotkeyId id;
    KeyCombination combination;
    QString name; ///< in the commands of its bindings
    bool isRegistered = true;
    bool isInSway = true; ///< not where the user's own binding is in its place
    bool isHeld = false;
    bool isReleaseIgnored = false; ///< of the press that ended the one before it
};

struct SwayHotkeys::Table {
    explicit Table(std::shared_ptr<SwayConnection> socket) : connection(std::move(socket)) {}

    [[nodiscard]] std::list<Entry>::iterator find(const QString& name)
    {
        return std::ranges::find(entries, name, &Entry::name);
    }
    /// One that was dropped and is still bound.
    [[nodiscard]] std::list<Entry>::iterator findDropped(const KeyCombination& combination)
    {
        return std::ranges::find_if(entries, [&](const Entry& entry) {
            return !entry.isRegistered && entry.isInSway && entry.combination == combination;
        });
    }
    void drop(const QString& name)
    {
        const auto entry = find(name);
        if (entry == entries.end())
            return;
        entry->isRegistered = false;
        // Later, since the same combination may be registered again at once: the user's keyboard may be
        // taking turns with ours then, and a press that is on its way is meant.
        QTimer::singleShot(0, &context, [this] { unbindDropped(); });
    }
    void unbindDropped()
    {
        for (auto entry = entries.begin(); entry != entries.end();) {
            const auto next = std::next(entry);
            if (!entry->isRegistered && !entry->isHeld)
                forget(entry);
            // While it is held, the binding of the release stays for that.
            else if (!entry->isRegistered && entry->isInSway)
                connection->run(swayBindings::unbindPress(entry->combination));
            entry = next;
        }
    }
    void forget(std::list<Entry>::iterator entry)
    {
        // The release of a key that is held stays bound, to nothing.
        if (entry->isInSway)
            connection->run(entry->isHeld ? swayBindings::unbindPress(entry->combination)
                                          : swayBindings::unbind(entry->combination));
        entries.erase(entry);
    }

    std::shared_ptr<SwayConnection> connection;
    std::list<Entry> entries;
    int made = 0;
    QObject context; ///< of what is still to be done
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
    m_bindingDue.setSingleShot(true);
    m_bindingDue.setInterval(releaseLimit);
    QObject::connect(&m_bindingDue, &QTimer::timeout, &m_context, [this] { bindAgain(); });
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
        if (entry.isRegistered && entry.combination == combination)
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
    if (const auto dropped = m_table->findDropped(combination); dropped != m_table->entries.end()) {
        dropped->id = id;
        dropped->isRegistered = true;
        // Its press may have been unbound already.
        if (dropped->isHeld && !m_connection->run(swayBindings::bindPress(combination, dropped->name)))
            return failure(HotkeyError::refused(heldAlready));
        return std::make_unique<Token>(m_table, dropped->name);
    }
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
        bindAgainWhenFree();
    // A binding belongs to the mode in which it was made.
    else if (event == SwayConnection::Event::mode && change == u"default")
        bindAgainWhenFree();
}

void SwayHotkeys::edge(const QString& command)
{
    const auto told = swayBindings::read(command);
    const auto entry = told ? m_table->find(told->name) : m_table->entries.end();
    if (entry == m_table->entries.end())
        return;
    if (told->isPress && !entry->isHeld) {
        if (!entry->isRegistered)
            return;
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
    if (!ended.isRegistered)
        m_table->forget(entry);
    tell(HotkeyEventKind::released, ended);
    if (m_bindingDue.isActive())
        bindAgainWhenFree();
}

void SwayHotkeys::tell(HotkeyEventKind kind, const Entry& entry)
{
    const EventHandler handler = m_eventHandler;
    if (handler)
        (void)handler({HotkeyEvent::Source::hotkey, kind, entry.id, entry.combination, {}});
}

void SwayHotkeys::bindAgainWhenFree()
{
    // What sway makes room for meanwhile may be what it still means to run at the release.
    if (std::ranges::any_of(m_table->entries, &Entry::isHeld))
        m_bindingDue.start();
    else
        bindAgain();
}

void SwayHotkeys::bindAgain()
{
    m_bindingDue.stop();
    // The user's configuration may have another opinion of our combinations now: theirs count.
    const QList<SymbolicHotkey> theirs = bindings();
    for (Entry& entry : m_table->entries) {
        entry.isInSway =
            std::ranges::find(theirs, entry.combination, &SymbolicHotkey::combination) == theirs.end();
        if (entry.isRegistered && entry.isInSway)
            m_connection->run(swayBindings::bind(entry.combination, entry.name));
    }
    noticeChange();
}

void SwayHotkeys::noticeChange()
{
    const ChangeHandler handler = m_changeHandler;
    if (handler)
        handler();
}

QList<SymbolicHotkey> SwayHotkeys::bindings() const
{
    return readSwayBindings(wholeSwayConfiguration(*m_connection), m_layout.keyOf);
}

QList<SymbolicHotkey> SwayHotkeys::symbolicHotkeys(const KeyCombination& about)
{
    QList<SymbolicHotkey> bound = bindings();
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
