#include <platform/linux/desktop/OwnConnection.h>

#include <QUuid>

namespace tulvane {

OwnConnection::OwnConnection(const QString& address) : m_name(QUuid::createUuid().toString())
{
    if (address.isEmpty())
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_name);
    else
        QDBusConnection::connectToBus(address, m_name);
}

OwnConnection::~OwnConnection()
{
    QDBusConnection::disconnectFromBus(m_name);
}

} // namespace tulvane
