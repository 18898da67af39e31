#include "ScriptedMutter.h"

#include <QDBusObjectPath>

namespace tulvane::test {

namespace {

const QString service = QStringLiteral("org.gnome.Mutter.RemoteDesktop");
const QString connectionName = QStringLiteral("scripted-mutter");
const QString waking = QStringLiteral("240");

} // namespace

ScriptedMutter::ScriptedMutter()
{
    m_connection = QDBusConnection::connectToBus(m_bus.address(), connectionName);
    m_connection.registerVirtualObject(QStringLiteral("/"), this, QDBusConnection::SubPath);
    if (!m_connection.registerService(service))
        qFatal("the bus refused a name");
}

ScriptedMutter::~ScriptedMutter()
{
    m_connection.unregisterObject(QStringLiteral("/"), QDBusConnection::UnregisterTree);
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(connectionName);
}

bool ScriptedMutter::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    connection.send(answer(message));
    return true;
}

QDBusMessage ScriptedMutter::answer(const QDBusMessage& message)
{
    const QDBusMessage refusal = message.createErrorReply(QDBusError::Failed, QStringLiteral("no"));
    const QString method = message.member();
    if (method == u"CreateSession") {
        if (refuses)
            return refusal;
        const QString session = QStringLiteral("/session/%1").arg(++opened);
        m_sessions.insert(session);
        return message.createReply(QVariant::fromValue(QDBusObjectPath(session)));
    }
    // Any object answers this.
    if (method == u"Ping")
        return message.createReply();
    if (!m_sessions.contains(message.path()))
        return refusal;
    if (method == u"Stop")
        m_sessions.remove(message.path());
    if (method == u"NotifyKeyboardKeycode") {
        const QString key = message.arguments().at(0).toString();
        const QString word = key + (message.arguments().at(1).toBool() ? u'+' : u'-');
        if (failing.contains(word))
            return refusal;
        if (key != waking)
            keys.append(word);
    }
    return message.createReply();
}

} // namespace tulvane::test
