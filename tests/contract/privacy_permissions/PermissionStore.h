#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QMap>
#include <QStringList>

#include <stdexcept>

namespace tulvane::test {

/// The permission store of a desktop's portals, which holds what the user has decided about the microphone.
/// Answers from the event loop of the test.
class PermissionStore final : public QDBusVirtualObject {
public:
    /// By the program's name: "yes" or "no".
    using Decisions = QMap<QString, QStringList>;

    /// On the bus at this address until it goes. Throws std::runtime_error where there is one already.
    explicit PermissionStore(const QString& bus, const Decisions& decisions = {})
        : m_bus(QDBusConnection::connectToBus(bus, QStringLiteral("permission-store"))),
          m_decisions(decisions)
    {
        qDBusRegisterMetaType<Decisions>();
        if (!m_bus.registerVirtualObject(path(), this) || !m_bus.registerService(name()))
            throw std::runtime_error("no permission store on the bus");
    }
    PermissionStore(const PermissionStore&) = delete;
    PermissionStore& operator=(const PermissionStore&) = delete;
    ~PermissionStore() override { QDBusConnection::disconnectFromBus(QStringLiteral("permission-store")); }

    /// The user decides; `entry` is "microphone" unless the change is about something else.
    void decide(const Decisions& decisions, const QString& entry = QStringLiteral("microphone"))
    {
        QDBusMessage signal = QDBusMessage::createSignal(path(), name(), QStringLiteral("Changed"));
        signal << QStringLiteral("devices") << entry << decisions.isEmpty()
               << QVariant::fromValue(QDBusVariant(QString())) << QVariant::fromValue(decisions);
        m_bus.send(signal);
    }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        const QVariantList wanted{QStringLiteral("devices"), QStringLiteral("microphone")};
        if (message.member() != u"Lookup" || message.arguments() != wanted)
            return false;
        if (m_decisions.isEmpty())
            return connection.send(
                message.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                         QStringLiteral("No entry for microphone")));
        return connection.send(message.createReply(
            {QVariant::fromValue(m_decisions), QVariant::fromValue(QDBusVariant(QString()))}));
    }

private:
    static QString name() { return QStringLiteral("org.freedesktop.impl.portal.PermissionStore"); }
    static QString path() { return QStringLiteral("/org/freedesktop/impl/portal/PermissionStore"); }

    QDBusConnection m_bus;
    Decisions m_decisions;
};

} // namespace tulvane::test
