#include <base/Log.h>
#include <base/Translate.h>
#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/kde/KGlobalAccelHotKeys.h>
#include <platform/linux/kde/QtKeys.h>
#include <platform/linux/keys/KeyText.h>

#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace tulvane {

namespace {

/// For the log: the service has no numbers of its own.
constexpr int heldElsewhere = 1;
/// So often a service that has its name is asked, or fails to take a key, before its next owner is awaited.
constexpr int mostWaits = 30;

/// The compositor's stamp counts milliseconds of the system's monotonic clock; of a device that it does not
/// read itself it may count anything.
std::chrono::milliseconds ageOf(qlonglong stamp)
{
    using namespace std::chrono;
    const auto now = duration_cast<milliseconds>(steady_clock::now().time_since_epoch());
    const milliseconds age = now - milliseconds(stamp);
    return age > milliseconds(0) && age < seconds(10) ? age : milliseconds(0);
}

} // namespace

class KGlobalAccelHotKeys::Token final : public Registration {
public:
    Token(KGlobalAccelHotKeys* owner, const Entry* entry) : m_owner(owner), m_entry(entry) {}
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    ~Token() override
    {
        if (m_owner)
            m_owner->drop(m_entry);
    }

private:
    QPointer<KGlobalAccelHotKeys> m_owner;
    const Entry* m_entry;
};

KGlobalAccelHotKeys::KGlobalAccelHotKeys(const Options& options)
    : m_bus(options.bus ? options.bus : LastingBus::session()),
      m_service(m_bus),
      m_watcher(KGlobalAccel::service, m_bus->connection()),
      m_keyboard(m_bus, options.configHome),
      m_component(options.component)
{
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& after) { ownerChanged(after); });
    connect(m_bus.get(), &LastingBus::lost, this, &KGlobalAccelHotKeys::lose);
    connect(m_bus.get(), &LastingBus::returned, this, [this] {
        listen();
        m_waits = 0;
        awaitService(0);
    });
    connect(&m_keyboard, &KdeKeyboard::changed, this, [this] { tellChange(); });
    listen();
}

void KGlobalAccelHotKeys::listen()
{
    QDBusConnection bus = m_bus->connection();
    m_listening.clear();
    m_watcher.setConnection(bus);
    bus.connect(KGlobalAccel::service, KGlobalAccel::path, KGlobalAccel::interface,
                QStringLiteral("yourShortcutsChanged"), this, SLOT(rebound(QDBusMessage)));
}

KGlobalAccelHotKeys::~KGlobalAccelHotKeys()
{
    for (const Entry& entry : m_entries)
        m_service.setInactive(entry.action);
}

Result<void, HotkeyError> KGlobalAccelHotKeys::support() const
{
    if (!m_isReady || !m_service.isThere() || !m_keyboard.isThere())
        return failure(HotkeyError::unreachable());
    return {};
}

KGlobalAccel::Action KGlobalAccelHotKeys::actionOf(HotkeyId id) const
{
    // What the user reads in the system settings.
    const QString title = translate("Start or stop dictation");
    return {m_component, QStringLiteral("hotkey-%1").arg(id.id), QStringLiteral("Tulvane"),
            id.id == 1 ? title : QStringLiteral("%1 (%2)").arg(title).arg(id.id)};
}

QString KGlobalAccelHotKeys::holderOf(const QList<int>& keys) const
{
    for (const int key : keys) {
        for (const KGlobalAccel::Action& holder : m_service.holders(key)) {
            if (holder.component != m_component)
                return holder.componentTitle.isEmpty() ? holder.component : holder.componentTitle;
        }
    }
    return {};
}

Result<QList<int>, HotkeyError> KGlobalAccelHotKeys::keysFor(const KeyCombination& combination) const
{
    if (const auto supported = support(); !supported)
        return failure(supported.error());
    const QList<int> keys = qtKeysOf(combination, m_keyboard.layout());
    if (keys.isEmpty())
        return failure(HotkeyError::noSuchKey());
    const bool isOurs = std::ranges::any_of(m_entries, [&](const Entry& entry) {
        return !entry.isDropped && (entry.combination == combination || entry.actual == combination);
    });
    if (isOurs)
        return failure(HotkeyError::taken(heldElsewhere));
    return keys;
}

Result<void, HotkeyError> KGlobalAccelHotKeys::isFree(const KeyCombination& combination)
{
    // Never by trying: the service keeps every action that it has heard of, for good.
    const auto keys = keysFor(combination);
    if (!keys)
        return failure(keys.error());
    const QString holder = holderOf(*keys);
    if (!holder.isEmpty())
        return failure(HotkeyError::takenBy(heldElsewhere, holder));
    return {};
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
KGlobalAccelHotKeys::registerHotkey(HotkeyId id, const KeyCombination& combination)
{
    const auto keys = keysFor(combination);
    if (!keys)
        return failure(keys.error());
    const KGlobalAccel::Action action = actionOf(id);
    const auto taken = take(action, *keys);
    if (!taken)
        return failure(taken.error());
    std::erase_if(m_entries,
                  [&](const Entry& entry) { return entry.isDropped && entry.id == id && !entry.isHeld; });
    const auto actual = combinationOfQtKey(taken->constFirst(), m_keyboard.layout());
    m_entries.push_back({id, combination, actual.value_or(combination), action});
    return std::make_unique<Token>(this, &m_entries.back());
}

Result<QList<int>, HotkeyError> KGlobalAccelHotKeys::take(const KGlobalAccel::Action& action,
                                                          const QList<int>& keys)
{
    // What we asked for last is the action's default: the same again is no wish of the user's, so that the
    // system settings count. Anything else is one, recorded in our own settings.
    const auto defaults = m_service.defaultKeys(action);
    const bool isNewWish = defaults != keys;
    if (defaults && isNewWish) {
        if (const QString holder = holderOf(keys); !holder.isEmpty())
            return failure(HotkeyError::takenBy(heldElsewhere, holder));
    }
    m_isSetting = true;
    const auto had = defaults ? set(action, keys, isNewWish) : std::nullopt;
    m_isSetting = false;
    if (!had) {
        m_isReady = false;
        awaitService(1);
        return failure(HotkeyError::unreachable());
    }
    m_waits = 0;
    if (!had->isEmpty())
        return *had;
    m_service.setInactive(action);
    if (const QString holder = holderOf(keys); !holder.isEmpty())
        return failure(HotkeyError::takenBy(heldElsewhere, holder));
    return failure(HotkeyError::unsupported(translate(
        "The system's shortcut settings give Tulvane no key. Set one there, or choose another one here.")));
}

std::optional<QList<int>> KGlobalAccelHotKeys::set(const KGlobalAccel::Action& action, const QList<int>& keys,
                                                   bool isNewWish)
{
    listenTo(m_service.add(action));
    if (isNewWish) {
        takeFromOurOwn(action, keys);
        m_service.setKeys(action, keys, KGlobalAccel::Keys::byDefault);
    }
    return m_service.setKeys(action, keys,
                             isNewWish ? KGlobalAccel::Keys::asGiven : KGlobalAccel::Keys::asStored);
}

void KGlobalAccelHotKeys::takeFromOurOwn(const KGlobalAccel::Action& action, const QList<int>& keys) const
{
    for (const int key : keys) {
        for (const KGlobalAccel::Action& holder : m_service.holders(key)) {
            if (holder.component != m_component || holder.name == action.name)
                continue;
            m_service.setKeys(holder, {}, KGlobalAccel::Keys::byDefault);
            m_service.setKeys(holder, {}, KGlobalAccel::Keys::asGiven);
        }
    }
}

void KGlobalAccelHotKeys::listenTo(const QString& componentPath)
{
    if (componentPath.isEmpty() || componentPath == m_listening)
        return;
    m_listening = componentPath;
    QDBusConnection bus = m_bus->connection();
    bus.connect(KGlobalAccel::service, componentPath, KGlobalAccel::componentInterface,
                QStringLiteral("globalShortcutPressed"), this, SLOT(pressed(QString, QString, qlonglong)));
    bus.connect(KGlobalAccel::service, componentPath, KGlobalAccel::componentInterface,
                QStringLiteral("globalShortcutReleased"), this, SLOT(released(QString, QString, qlonglong)));
}

KGlobalAccelHotKeys::Entry* KGlobalAccelHotKeys::find(const QString& action)
{
    // One that was dropped while it was held comes first: its release is still due.
    const auto found =
        std::ranges::find_if(m_entries, [&](const Entry& entry) { return entry.action.name == action; });
    return found == m_entries.end() ? nullptr : &*found;
}

void KGlobalAccelHotKeys::drop(const Entry* dropped)
{
    const auto found = std::ranges::find_if(m_entries, [&](const Entry& entry) { return &entry == dropped; });
    if (found == m_entries.end())
        return;
    if (found->isHeld) {
        found->isDropped = true;
        return;
    }
    m_service.setInactive(found->action);
    m_entries.erase(found);
}

void KGlobalAccelHotKeys::pressed(const QString& component, const QString& action, qlonglong time)
{
    Entry* const entry = component == m_component ? find(action) : nullptr;
    if (entry == nullptr)
        return;
    // A key that is held is reported over and over.
    const HotkeyEventKind kind = entry->isHeld ? HotkeyEventKind::repeated : HotkeyEventKind::pressed;
    entry->isHeld = true;
    tell(kind, *entry, time);
}

void KGlobalAccelHotKeys::released(const QString& component, const QString& action, qlonglong time)
{
    Entry* const entry = component == m_component ? find(action) : nullptr;
    if (entry == nullptr || !entry->isHeld)
        return;
    entry->isHeld = false;
    const Entry ended = *entry;
    if (ended.isDropped) {
        m_entries.remove_if([&](const Entry& each) { return &each == entry; });
        if (find(action) == nullptr)
            m_service.setInactive(ended.action);
    }
    tell(HotkeyEventKind::released, ended, time);
}

void KGlobalAccelHotKeys::tell(HotkeyEventKind kind, const Entry& entry, qlonglong time)
{
    const EventHandler handler = m_eventHandler;
    const HotkeyEvent event{HotkeyEvent::Source::hotkey, kind, entry.id, entry.combination, ageOf(time)};
    if (handler)
        (void)handler(event);
}

void KGlobalAccelHotKeys::rebound(const QDBusMessage& message)
{
    const QStringList words = message.arguments().value(0).toStringList();
    if (m_isSetting || words.value(0) != m_component || find(words.value(1)) == nullptr)
        return;
    qCInfo(lcHotkey, "The system settings have another key for %ls", qUtf16Printable(words.value(1)));
    tellChange();
}

void KGlobalAccelHotKeys::ownerChanged(const QString& after)
{
    lose();
    m_waits = 0;
    if (!after.isEmpty())
        awaitService(0);
}

void KGlobalAccelHotKeys::lose()
{
    m_isReady = false;
    ++m_round;
    // What was held will never be reported as let go.
    std::vector<Entry> held;
    for (Entry& entry : m_entries) {
        if (std::exchange(entry.isHeld, false))
            held.push_back(entry);
    }
    std::erase_if(m_entries, [](const Entry& entry) { return entry.isDropped; });
    for (const Entry& entry : held)
        tell(HotkeyEventKind::released, entry, 0);
    tellChange();
}

void KGlobalAccelHotKeys::awaitService(int patience)
{
    if (m_waits++ == mostWaits) {
        qCWarning(lcHotkey, "The desktop's service for shortcuts does not do its work");
        return;
    }
    const int round = ++m_round;
    QTimer::singleShot(std::chrono::seconds(patience), this, [this, round] {
        if (round != m_round)
            return;
        whenAnswered(m_service.askForAnything(), this, [this, round](const QDBusPendingReply<>& answer) {
            if (round == m_round)
                serviceAnswered(answer.error());
        });
    });
}

void KGlobalAccelHotKeys::serviceAnswered(const QDBusError& error)
{
    // It may have its name before it has its objects. Without its name, or without the bus, its next owner is
    // awaited.
    if (error.type() == QDBusError::ServiceUnknown || !m_service.isThere())
        return;
    if (error.isValid() && error.type() != QDBusError::UnknownMethod) {
        awaitService(1);
        return;
    }
    m_isReady = true;
    tellChange();
}

void KGlobalAccelHotKeys::tellChange()
{
    const ChangeHandler handler = m_changeHandler;
    if (handler)
        handler();
}

QList<SymbolicHotkey> KGlobalAccelHotKeys::symbolicHotkeys(const KeyCombination& about)
{
    if (!support())
        return {};
    const QString holder = holderOf(qtKeysOf(about, m_keyboard.layout()));
    return holder.isEmpty() ? QList<SymbolicHotkey>{} : QList<SymbolicHotkey>{{true, about, holder}};
}

KeyDisplay KGlobalAccelHotKeys::display(const KeyCombination& combination) const
{
    const auto found =
        std::ranges::find_if(m_entries, [&](const Entry& entry) { return entry.combination == combination; });
    return linuxKeyDisplay(found == m_entries.end() ? combination : found->actual,
                           [this](const VirtualKey& key) {
                               return m_keyboard.isThere() ? m_keyboard.layout().label(key) : QString();
                           });
}

} // namespace tulvane
