#include <support/screen/ScriptedLoginManager.h>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QUuid>

#include <stdexcept>

namespace tulvane::test {

namespace {

const QString manager = QStringLiteral("org.freedesktop.login1");
const QString managerPath = QStringLiteral("/org/freedesktop/login1");
const QString sessionPath = QStringLiteral("/org/freedesktop/login1/session/_37");
const QString sessionInterface = QStringLiteral("org.freedesktop.login1.Session");
const QString properties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString lockedHint = QStringLiteral("LockedHint");

} // namespace

ScriptedLoginManager::ScriptedLoginManager(const QString& bus, bool locked)
    : m_link(QUuid::createUuid().toString()),
      m_bus(QDBusConnection::connectToBus(bus, m_link)),
      m_locked(locked)
{
    if (!m_bus.registerVirtualObject(managerPath, this, QDBusConnection::SubPath) ||
        !m_bus.registerService(manager))
        throw std::runtime_error("no login manager on the bus");
}

ScriptedLoginManager::~ScriptedLoginManager()
{
    QDBusConnection::disconnectFromBus(m_link);
}

void ScriptedLoginManager::setLockedHint(bool locked, Telling telling)
{
    m_locked = locked;
    QDBusMessage change =
        QDBusMessage::createSignal(sessionPath, properties, QStringLiteral("PropertiesChanged"));
    const bool isNamed = telling == Telling::withValue;
    change << sessionInterface << (isNamed ? QVariantMap{{lockedHint, locked}} : QVariantMap())
           << (isNamed ? QStringList() : QStringList(lockedHint));
    m_bus.send(change);
}

void ScriptedLoginManager::signal(const char* name)
{
    m_bus.send(QDBusMessage::createSignal(sessionPath, sessionInterface, QString::fromLatin1(name)));
}

bool ScriptedLoginManager::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const QVariantList arguments = message.arguments();
    if (message.path() == managerPath && message.member() == u"GetSession") {
        const QString id = arguments.value(0).toString();
        if (id != u"7" && id != u"auto")
            return connection.send(message.createErrorReply(
                QStringLiteral("org.freedesktop.login1.NoSuchSession"), QStringLiteral("No session")));
        return connection.send(message.createReply(QVariant::fromValue(QDBusObjectPath(sessionPath))));
    }
    if (message.path() == sessionPath && message.interface() == properties && message.member() == u"Get" &&
        arguments == QVariantList{sessionInterface, lockedHint})
        return connection.send(message.createReply(QVariant::fromValue(QDBusVariant(m_locked))));
    return false;
}

} // namespace tulvane::test
