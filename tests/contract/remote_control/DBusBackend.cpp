#include "RemoteControlBackend.h"

#include <platform/linux/desktop/DBusRemoteControl.h>
#include <support/Await.h>
#include <support/ReturningBus.h>
#include <support/VirtualDesktop.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace tulvane::test {

namespace {

/// The phases that a listener on the bus received.
class PhaseListener final : public QObject {
    Q_OBJECT

public:
    QStringList phases;

public Q_SLOTS:
    void note(const QString& phase) { phases.append(phase); }
};

class DBusBackend final : public RemoteControlBackend {
public:
    std::unique_ptr<RemoteControl> process() override { return std::make_unique<DBusRemoteControl>(bus()); }
    std::unique_ptr<RemoteControl> lonelyProcess() override
    {
        return std::make_unique<DBusRemoteControl>(QStringLiteral("unix:path=/nowhere/bus"));
    }
    [[nodiscard]] QString bus() const
    {
        return m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    }

private:
    VirtualDesktop m_desktop{{.windowManager = VirtualDesktop::WindowManager::none,
                              .sessionBus = VirtualDesktop::SessionBus::own,
                              .openboxKeys = {}}};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(DBus, RemoteControlContract,
                         testing::Values(RemoteBackendFactory{
                             "DBus", [] { return std::make_unique<DBusBackend>(); }}));

TEST(DBusRemoteControl, IsSeenOnTheBusByItsNameAndTellsItsPhases)
{
    DBusBackend backend;
    const auto program = backend.process();
    ASSERT_EQ(program->claim([](RemoteRequest, const QString&) {
        return QJsonObject{{QStringLiteral("phase"), QStringLiteral("idle")}};
    }),
              RemoteControl::Claim::granted);

    const QString name = QStringLiteral("com.dunio.Tulvane");
    QDBusConnection bus = QDBusConnection::connectToBus(backend.bus(), QStringLiteral("listener"));
    PhaseListener listener;
    ASSERT_TRUE(bus.connect(name, QStringLiteral("/com/dunio/Tulvane"), name, QStringLiteral("PhaseChanged"),
                            &listener, SLOT(note(QString))));
    const QDBusMessage question = QDBusMessage::createMethodCall(name, QStringLiteral("/com/dunio/Tulvane"),
                                                                 name, QStringLiteral("Status"));
    std::optional<QString> status;
    QObject::connect(new QDBusPendingCallWatcher(bus.asyncCall(question), &listener),
                     &QDBusPendingCallWatcher::finished, &listener, [&](QDBusPendingCallWatcher* call) {
                         status = QDBusPendingReply<QString>(*call).value();
                     });
    ASSERT_TRUE(waitUntil([&] { return status.has_value(); }));
    EXPECT_EQ(*status, QStringLiteral(R"({"phase":"idle"})"));

    program->announcePhase(QStringLiteral("recording"));
    EXPECT_TRUE(waitUntil([&] { return listener.phases == QStringList{QStringLiteral("recording")}; }));
    QDBusConnection::disconnectFromBus(QStringLiteral("listener"));
}

namespace {

RemoteControl::Answer sayIdle()
{
    return [](RemoteRequest, const QString&) {
        return QJsonObject{{QStringLiteral("phase"), QStringLiteral("idle")}};
    };
}

} // namespace

TEST(DBusRemoteControl, ABusThatEndsAndComesBackFindsTheProgramAgain)
{
    ReturningBus bus;
    DBusRemoteControl program(bus.address());
    ASSERT_EQ(program.claim(sayIdle()), RemoteControl::Claim::granted);
    for (int round = 0; round < 2; ++round) {
        bus.kill();
        program.announcePhase(QStringLiteral("recording"));
        bus.start();
        EXPECT_TRUE(waitUntil([&] {
            DBusRemoteControl asking(bus.address());
            return await(asking.ask(RemoteRequest::status)).has_value();
        }));
        DBusRemoteControl second(bus.address());
        EXPECT_EQ(second.claim(sayIdle()), RemoteControl::Claim::taken);
    }
}

TEST(DBusRemoteControl, EndsWhileItsBusIsGone)
{
    ReturningBus bus;
    auto program = std::make_unique<DBusRemoteControl>(bus.address());
    ASSERT_EQ(program->claim(sayIdle()), RemoteControl::Claim::granted);
    bus.kill();
    runEventLoopFor(std::chrono::milliseconds(50));
    program.reset();
    runEventLoopFor(std::chrono::milliseconds(50));
}

} // namespace tulvane::test

#include "DBusBackend.moc"
