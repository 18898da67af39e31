#include <platform/linux/desktop/BusAnswer.h>
#include <platform/linux/desktop/LastingBus.h>
#include <platform/linux/desktop/LoginSession.h>

#include <QDBusConnection>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <utility>

namespace tulvane {

namespace {

const QString manager = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString managerInterface = QStringLiteral("org.freedesktop.login1.Manager");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString lockedHint = QStringLiteral("LockedHint");

} // namespace

LoginSession::LoginSession(std::shared_ptr<LastingBus> bus, const QString& id,
                           std::chrono::milliseconds timeForLocker)
    : m_bus(std::move(bus)),
      m_watcher(manager, m_bus->connection(), QDBusServiceWatcher::WatchForRegistration),
      // The manager's own word for the caller's session or, for a process outside of all, the user's.
      m_id(id.isEmpty() ? QStringLiteral("auto") : id)
{
    m_request.setSingleShot(true);
    m_request.setInterval(timeForLocker);
    connect(&m_request, &QTimer::timeout, this, &LoginSession::changed);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this, &LoginSession::find);
    connect(m_bus.get(), &LastingBus::returned, this, &LoginSession::listen);
    listen();
}

LoginSession::~LoginSession() = default;

void LoginSession::listen()
{
    const QDBusConnection bus = m_bus->connection();
    if (!bus.isConnected())
        return;
    m_path.clear(); // nothing is followed over this connection yet
    m_watcher.setConnection(bus);
    find();
}

void LoginSession::find()
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(manager, managerPath, managerInterface, QStringLiteral("GetSession"));
    call << m_id;
    call.setAutoStartService(false);
    whenAnswered<QDBusObjectPath>(m_bus->connection().asyncCall(call), this, [this](const auto& reply) {
        if (!reply.isError())
            follow(reply.value().path());
    });
}

void LoginSession::follow(const QString& path)
{
    if (std::exchange(m_path, path) != path) {
        QDBusConnection bus = m_bus->connection();
        bus.connect(manager, path, properties, QStringLiteral("PropertiesChanged"), this,
                    SLOT(noteChanges(QString, QVariantMap, QStringList)));
        bus.connect(manager, path, sessionInterface, QStringLiteral("Lock"), this, SLOT(noteLockRequest()));
        bus.connect(manager, path, sessionInterface, QStringLiteral("Unlock"), this,
                    SLOT(noteUnlockRequest()));
    }
    askForHint();
}

void LoginSession::askForHint()
{
    QDBusMessage call = QDBusMessage::createMethodCall(manager, m_path, properties, QStringLiteral("Get"));
    call << sessionInterface << lockedHint;
    whenAnswered<QDBusVariant>(m_bus->connection().asyncCall(call), this, [this](const auto& reply) {
        if (!reply.isError())
            setHint(reply.value().variant().toBool());
    });
}

void LoginSession::noteChanges(const QString& interface, const QVariantMap& values,
                               const QStringList& invalid)
{
    if (interface != sessionInterface)
        return;
    if (const auto hint = values.constFind(lockedHint); hint != values.cend())
        setHint(hint->toBool());
    else if (invalid.contains(lockedHint))
        askForHint();
}

void LoginSession::setHint(bool locked)
{
    const bool before = std::exchange(m_hint, locked);
    // The locker has been there, and has gone.
    if (before && !locked)
        m_request.stop();
    Q_EMIT changed();
}

void LoginSession::noteLockRequest()
{
    m_request.start();
    Q_EMIT changed();
}

void LoginSession::noteUnlockRequest()
{
    endRequest();
}

void LoginSession::endRequest()
{
    m_request.stop();
    Q_EMIT changed();
}

} // namespace tulvane
