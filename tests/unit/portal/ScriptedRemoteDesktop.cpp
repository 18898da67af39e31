#include "ScriptedRemoteDesktop.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QTimer>

namespace tulvane::test {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString wakingKey = QStringLiteral("240");

QVariantMap optionsOf(const QDBusMessage& message)
{
    return qdbus_cast<QVariantMap>(message.arguments().constLast());
}

} // namespace

ScriptedRemoteDesktop::ScriptedRemoteDesktop(QDBusConnection bus, uint version)
    : m_bus(std::move(bus)),
      m_version(version)
{
    if (!m_bus.registerVirtualObject(portalPath, this, QDBusConnection::SubPath))
        qFatal("the portal has no place");
    start();
}

ScriptedRemoteDesktop::~ScriptedRemoteDesktop()
{
    quit();
    m_bus.unregisterObject(portalPath, QDBusConnection::UnregisterTree);
}

void ScriptedRemoteDesktop::start()
{
    if (!m_bus.registerService(portalService))
        qFatal("the bus refused a name");
}

void ScriptedRemoteDesktop::quit()
{
    m_bus.unregisterService(portalService);
    m_session.clear();
    m_waiting.clear();
}

bool ScriptedRemoteDesktop::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    connection.send(reply(message));
    return true;
}

QDBusMessage ScriptedRemoteDesktop::reply(const QDBusMessage& message)
{
    const QString method = message.member();
    if (method == u"Get")
        return message.createReply(QVariant::fromValue(QDBusVariant(m_version)));
    if (method == u"Ping")
        return message.createReply();
    if (method == u"NotifyKeyboardKeycode")
        return noteKey(message);
    calls.append(method);
    if (method == u"Close") {
        if (message.path() == m_session) {
            m_session.clear();
            m_waiting.clear();
        }
        return message.createReply();
    }
    return request(message);
}

QDBusMessage ScriptedRemoteDesktop::noteKey(const QDBusMessage& message)
{
    const QVariantList words = message.arguments();
    // As the portal checks them.
    const bool isTyped = message.signature() == u"oa{sv}iu";
    if (!isTyped || m_session.isEmpty() || words[0].value<QDBusObjectPath>().path() != m_session)
        return message.createErrorReply(QDBusError::AccessDenied, QStringLiteral("no such session"));
    if (words[2].toString() != wakingKey)
        keys.append(words[2].toString() + (words[3].toUInt() == 1 ? u'+' : u'-'));
    return message.createReply();
}

QDBusMessage ScriptedRemoteDesktop::request(const QDBusMessage& message)
{
    const QString method = message.member();
    const QVariantMap options = optionsOf(message);
    const QString sender = message.service().mid(1).replace(u'.', u'_');
    const QString path =
        portalPath + QStringLiteral("/request/%1/%2")
                         .arg(sender, options.value(QStringLiteral("handle_token")).toString());
    if (method == u"CreateSession") {
        m_session =
            portalPath + QStringLiteral("/session/%1/%2")
                             .arg(sender, options.value(QStringLiteral("session_handle_token")).toString());
        respond(path, isBroken ? 2 : 0, {{QStringLiteral("session_handle"), m_session}});
    } else if (message.arguments().value(0).value<QDBusObjectPath>().path() != m_session) {
        respond(path, 2, {});
    } else if (method == u"SelectDevices") {
        selection = options;
        respond(path, 0, {});
    } else {
        m_waiting = path;
        if (user != User::isSilent)
            answer(user == User::agrees);
    }
    return message.createReply(QVariant::fromValue(QDBusObjectPath(path)));
}

void ScriptedRemoteDesktop::answer(bool agrees)
{
    QVariantMap results;
    if (agrees)
        results.insert(QStringLiteral("devices"), devices);
    if (agrees && !nextToken.isEmpty())
        results.insert(QStringLiteral("restore_token"), nextToken);
    respond(std::exchange(m_waiting, {}), agrees ? 0 : 1, results);
}

void ScriptedRemoteDesktop::respond(const QString& path, uint response, const QVariantMap& results)
{
    QTimer::singleShot(0, this, [this, path, response, results] {
        QDBusMessage signal = QDBusMessage::createSignal(
            path, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
        signal << response << results;
        m_bus.send(signal);
    });
}

void ScriptedRemoteDesktop::endSession()
{
    m_bus.send(QDBusMessage::createSignal(m_session, QStringLiteral("org.freedesktop.portal.Session"),
                                          QStringLiteral("Closed"))
               << QVariantMap());
    m_session.clear();
}

} // namespace tulvane::test
