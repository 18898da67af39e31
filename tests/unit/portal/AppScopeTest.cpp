#include <platform/linux/portal/AppScope.h>
#include <support/PrivateBus.h>

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QThread>

#include <gtest/gtest.h>

#include <atomic>

namespace tulvane::test {

namespace {

/// The user's service manager, as far as it is asked here; in a thread, since the caller waits.
class ScriptedManager final : public QDBusVirtualObject {
public:
    explicit ScriptedManager(QDBusConnection bus) : m_bus(std::move(bus))
    {
        m_bus.registerVirtualObject(QStringLiteral("/org/freedesktop/systemd1"), this);
        m_bus.registerService(QStringLiteral("org.freedesktop.systemd1"));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        signature = message.signature();
        unit = message.arguments().value(0).toString();
        mode = message.arguments().value(1).toString();
        const auto properties = message.arguments().value(2).value<QDBusArgument>();
        properties.beginArray();
        while (!properties.atEnd()) {
            QString name;
            QDBusVariant value;
            properties.beginStructure();
            properties >> name >> value;
            properties.endStructure();
            if (name == u"PIDs")
                processes = qdbus_cast<QList<uint>>(value.variant());
        }
        properties.endArray();
        connection.send(
            message.createReply(QVariant::fromValue(QDBusObjectPath(QStringLiteral("/org/job/1")))));
        return true;
    }

    QString signature;
    QString unit;
    QString mode;
    QList<uint> processes;

private:
    QDBusConnection m_bus;
};

TEST(AppScopeCall, TheManagerIsAskedForAScopeOfThisProcess)
{
    const PrivateBus bus;
    ScriptedManager manager(bus.connect());
    std::atomic<bool> hasJoined = false;
    // The manager answers on this thread.
    const std::unique_ptr<QThread> caller(QThread::create(
        [&] { hasJoined = joinAppScope(bus.connect(), QStringLiteral("com.dunio.Tul-vane")); }));
    caller->start();
    while (!caller->isFinished())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    EXPECT_TRUE(hasJoined);
    const auto process = QCoreApplication::applicationPid();
    EXPECT_EQ(manager.signature, QStringLiteral("ssa(sv)a(sa(sv))"));
    EXPECT_EQ(manager.unit, QStringLiteral("app-com.dunio.Tul\\x2dvane-%1.scope").arg(process));
    EXPECT_EQ(manager.mode, QStringLiteral("fail"));
    EXPECT_EQ(manager.processes, QList<uint>{static_cast<uint>(process)});
}

TEST(AppScopeCall, WithoutAManagerNothingHappens)
{
    const PrivateBus bus;
    EXPECT_FALSE(joinAppScope(bus.connect(), QStringLiteral("com.dunio.Tulvane")));
}

} // namespace

} // namespace tulvane::test
