#include <base/Log.h>
#include <base/Translate.h>
#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/keys/KeyText.h>
#include <platform/linux/portal/PortalHotkeys.h>
#include <platform/linux/portal/PortalTrigger.h>

#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace tulvane {

namespace {

/// Constant, since some desktops file the user's choice under both.
const QString sessionToken = QStringLiteral("tulvane");
const QString shortcutId = QStringLiteral("dictate");
const QString shortcutsName = QStringLiteral("shortcuts");
constexpr int heldAlready = 1;

PortalShortcuts shortcutsIn(const QVariantMap& results)
{
    return qdbus_cast<PortalShortcuts>(results.value(shortcutsName));
}

} // namespace

class PortalHotkeys::Token final : public Registration {
public:
    explicit Token(PortalHotkeys* owner) : m_owner(owner) {}
    Token(const Token&) = delete;
    Token& operator=(const Token&) = delete;
    ~Token() override
    {
        if (m_owner)
            m_owner->drop();
    }

private:
    QPointer<PortalHotkeys> m_owner;
};

PortalHotkeys::PortalHotkeys(std::shared_ptr<LastingBus> bus, XkbKeymap layout)
    : m_bus(std::move(bus)),
      m_layout(std::move(layout))
{
    qDBusRegisterMetaType<PortalShortcut>();
    qDBusRegisterMetaType<PortalShortcuts>();
    // A portal ends with its bus.
    connect(m_bus.get(), &LastingBus::lost, this, &PortalHotkeys::lose);
    connect(m_bus.get(), &LastingBus::returned, this, [this] {
        listen();
        startPortal();
        if (!m_entry)
            tellChange(); // what was asked for meanwhile had to fail
    });
    listen();
}

PortalHotkeys::~PortalHotkeys()
{
    close();
}

void PortalHotkeys::listen()
{
    QDBusConnection bus = m_bus->connection();
    const auto& portal = PortalRequest::service;
    const auto& path = PortalRequest::path;
    bus.connect(portal, path, interface, QStringLiteral("Activated"), this, SLOT(activated(QDBusMessage)));
    bus.connect(portal, path, interface, QStringLiteral("Deactivated"), this,
                SLOT(deactivated(QDBusMessage)));
    bus.connect(portal, path, interface, QStringLiteral("ShortcutsChanged"), this,
                SLOT(rebound(QDBusMessage)));
    bus.connect(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameOwnerChanged"), {portal},
                QString(), this, SLOT(ownerChanged(QString, QString, QString)));
}

Result<void, HotkeyError> PortalHotkeys::support() const
{
    if (!m_bus->connection().isConnected())
        return failure(HotkeyError::unreachable());
    return {};
}

Result<void, HotkeyError> PortalHotkeys::isFree(const KeyCombination& combination)
{
    if (const auto supported = support(); !supported)
        return supported;
    if (portalTrigger(combination, m_layout).isEmpty())
        return failure(HotkeyError::noSuchKey());
    if (m_entry)
        return failure(HotkeyError::taken(heldAlready));
    return {};
}

Result<std::unique_ptr<GlobalHotkeys::Registration>, HotkeyError>
PortalHotkeys::registerHotkey(HotkeyId id, const KeyCombination& combination)
{
    if (const auto free = isFree(combination); !free)
        return failure(free.error());
    // Said once: a registration after that is the user's wish, and asks anew.
    if (std::exchange(m_declined, std::nullopt) == combination)
        return failure(HotkeyError::unsupported(
            translate("The desktop gave Tulvane no key: it was declined, or is not possible. Try again, or "
                      "bind the command “tulvane toggle” to a key in the desktop's own settings.")));
    m_entry = Entry{id, combination};
    if (m_opened != combination)
        open();
    return std::make_unique<Token>(this);
}

PortalRequest& PortalHotkeys::request(void (PortalHotkeys::*answered)(PortalRequest::Outcome,
                                                                      const QVariantMap&))
{
    return m_question.begin(m_bus->connection(), [this, answered](auto outcome, const QVariantMap& results) {
        (this->*answered)(outcome, results);
    });
}

PortalShortcuts PortalHotkeys::wish() const
{
    return {{shortcutId,
             {{QStringLiteral("description"), translate("Start or stop dictation")},
              {QStringLiteral("preferred_trigger"), portalTrigger(*m_opened, m_layout)}}}};
}

void PortalHotkeys::open()
{
    close();
    m_opened = m_entry->combination;
    // Some desktops read the shortcuts here and some at the binding.
    request(&PortalHotkeys::noteSession)
        .send(interface, QStringLiteral("CreateSession"), {},
              {{QStringLiteral("session_handle_token"), sessionToken},
               {shortcutsName, QVariant::fromValue(wish())}});
}

void PortalHotkeys::noteSession(PortalRequest::Outcome outcome, const QVariantMap& results)
{
    if (outcome != PortalRequest::Outcome::granted) {
        decline();
        return;
    }
    m_session = PortalRequest::sessionIn(results);
    m_bus->connection().connect(PortalRequest::service, m_session, PortalRequest::sessionInterface,
                                QStringLiteral("Closed"), this, SLOT(closed()));
    request(&PortalHotkeys::noteList)
        .send(interface, QStringLiteral("ListShortcuts"), {QVariant::fromValue(QDBusObjectPath(m_session))},
              {});
}

void PortalHotkeys::noteList(PortalRequest::Outcome outcome, const QVariantMap& results)
{
    if (outcome == PortalRequest::Outcome::granted && readTrigger(shortcutsIn(results))) {
        noteBound(outcome, results);
        return;
    }
    request(&PortalHotkeys::noteBound)
        .send(interface, QStringLiteral("BindShortcuts"),
              {QVariant::fromValue(QDBusObjectPath(m_session)), QVariant::fromValue(wish()), QString()}, {});
}

void PortalHotkeys::noteBound(PortalRequest::Outcome outcome, const QVariantMap& results)
{
    if (outcome != PortalRequest::Outcome::granted) {
        decline();
        return;
    }
    m_question.end();
    qCInfo(lcHotkey, "The desktop's portal has given the hotkey");
    // A portal may say nothing of what it has bound.
    readTrigger(shortcutsIn(results));
    tellChange();
}

bool PortalHotkeys::readTrigger(const PortalShortcuts& shortcuts)
{
    const auto ours = std::ranges::find(shortcuts, shortcutId, &PortalShortcut::id);
    if (ours == shortcuts.end())
        return false;
    m_trigger = ours->properties.value(QStringLiteral("trigger_description")).toString();
    return true;
}

void PortalHotkeys::decline()
{
    if (!m_bus->connection().isConnected()) {
        lose();
        return;
    }
    qCWarning(lcHotkey, "The desktop's portal gives no hotkey");
    m_declined = m_opened;
    close();
    tellChange();
}

void PortalHotkeys::close()
{
    release();
    m_question.end();
    m_trigger.clear();
    m_opened.reset();
    const QString session = std::exchange(m_session, {});
    if (session.isEmpty())
        return;
    m_bus->connection().disconnect(PortalRequest::service, session, PortalRequest::sessionInterface,
                                   QStringLiteral("Closed"), this, SLOT(closed()));
    m_bus->connection().send(QDBusMessage::createMethodCall(
        PortalRequest::service, session, PortalRequest::sessionInterface, QStringLiteral("Close")));
}

void PortalHotkeys::drop()
{
    m_entry.reset();
    // The same combination may be registered again at once.
    QTimer::singleShot(0, this, &PortalHotkeys::closeWhenUnused);
}

void PortalHotkeys::closeWhenUnused()
{
    if (!m_entry && !m_held)
        close();
}

bool PortalHotkeys::isOurs(const QDBusMessage& message) const
{
    const QList<QVariant> arguments = message.arguments();
    return arguments.value(0).value<QDBusObjectPath>().path() == m_session &&
           arguments.value(1).toString() == shortcutId;
}

void PortalHotkeys::activated(const QDBusMessage& message)
{
    if (!m_entry || !isOurs(message))
        return;
    const bool isRepeated = m_held.has_value();
    m_held = m_entry;
    tell(isRepeated ? HotkeyEventKind::repeated : HotkeyEventKind::pressed, Entry(*m_entry));
}

void PortalHotkeys::deactivated(const QDBusMessage& message)
{
    if (!isOurs(message))
        return;
    release();
    closeWhenUnused();
}

void PortalHotkeys::release()
{
    if (const auto held = std::exchange(m_held, std::nullopt))
        tell(HotkeyEventKind::released, *held);
}

void PortalHotkeys::tell(HotkeyEventKind kind, const Entry& entry)
{
    const EventHandler handler = m_eventHandler;
    if (handler)
        (void)handler({HotkeyEvent::Source::hotkey, kind, entry.id, entry.combination, {}});
}

void PortalHotkeys::rebound(const QDBusMessage& message)
{
    const QList<QVariant> arguments = message.arguments();
    if (arguments.size() < 2 || arguments[0].value<QDBusObjectPath>().path() != m_session)
        return;
    readTrigger(qdbus_cast<PortalShortcuts>(arguments[1]));
    tellChange();
}

void PortalHotkeys::closed()
{
    m_session.clear();
    decline();
}

void PortalHotkeys::ownerChanged(const QString&, const QString&, const QString& after)
{
    if (after.isEmpty()) {
        lose();
    } else {
        openAgain();
    }
}

void PortalHotkeys::lose()
{
    m_isLost = m_isLost || m_opened.has_value();
    m_session.clear();
    close();
}

void PortalHotkeys::startPortal()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("StartServiceByName"));
    call << PortalRequest::service << 0U;
    whenAnswered<>(m_bus->connection().asyncCall(call), this, [this](const auto& answer) {
        // One that the bus cannot start may come by itself, and is noticed then.
        if (!answer.isError())
            openAgain();
    });
}

void PortalHotkeys::openAgain()
{
    if (std::exchange(m_isLost, false) && m_entry)
        open();
}

void PortalHotkeys::tellChange()
{
    const ChangeHandler handler = m_changeHandler;
    if (handler)
        handler();
}

KeyDisplay PortalHotkeys::display(const KeyCombination& combination) const
{
    if (m_opened == combination && !m_trigger.isEmpty())
        return {{m_trigger}, {}};
    return linuxKeyDisplay(combination, [this](const VirtualKey& key) { return m_layout.label(key); });
}

} // namespace tulvane
