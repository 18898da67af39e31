#include <support/screen/ScriptedSaver.h>

#include <QDBusMessage>
#include <QUuid>

#include <stdexcept>

namespace tulvane::test {

ScriptedSaver::ScriptedSaver(const QString& bus, const QString& name, bool active)
    : m_name(name),
      m_path(u'/' + QString(name).replace(u'.', u'/')),
      m_link(QUuid::createUuid().toString()),
      m_bus(QDBusConnection::connectToBus(bus, m_link)),
      m_active(active)
{
    if (!m_bus.registerVirtualObject(m_path, this) || !m_bus.registerService(name))
        throw std::runtime_error("no screen saver on the bus");
}

ScriptedSaver::~ScriptedSaver()
{
    QDBusConnection::disconnectFromBus(m_link);
}

void ScriptedSaver::setActive(bool active)
{
    m_active = active;
    QDBusMessage signal = QDBusMessage::createSignal(m_path, m_name, QStringLiteral("ActiveChanged"));
    signal << active;
    m_bus.send(signal);
}

bool ScriptedSaver::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    if (message.interface() != m_name || message.member() != u"GetActive")
        return false;
    return connection.send(message.createReply(m_active));
}

} // namespace tulvane::test
