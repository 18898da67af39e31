#include "ScreenLockWorld.h"

#include <platform/linux/desktop/DBusScreenLock.h>
#include <support/Await.h>
#include <support/ReturningBus.h>
#include <support/VirtualDesktop.h>
#include <support/screen/ScriptedLoginManager.h>
#include <support/screen/ScriptedSaver.h>

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QUuid>

#include <gmock/gmock.h>

namespace tulvane::test {

namespace {

using namespace std::chrono_literals;
using Telling = ScriptedLoginManager::Telling;

const QString gnome = QStringLiteral("org.gnome.ScreenSaver");

/// A bus that is both the session's and the system's, and the adapter on it.
class BusDesktop {
public:
    [[nodiscard]] QString bus() const
    {
        return m_desktop.environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    }
    [[nodiscard]] ScreenLock& lock(const QString& session = {}, std::chrono::milliseconds requestTime = 10s)
    {
        if (!m_lock)
            m_lock.emplace(DBusScreenLock::Options{.sessionBus = std::make_shared<LastingBus>(bus()),
                                                   .systemBus = std::make_shared<LastingBus>(bus()),
                                                   .session = session,
                                                   .requestTime = requestTime});
        return *m_lock;
    }
    /// Returns once everything that is on its way on the bus has arrived.
    void settle()
    {
        const QString name = QUuid::createUuid().toString();
        QDBusConnection own = QDBusConnection::connectToBus(bus(), name);
        for (int round = 0; round < 3; ++round) {
            QDBusMessage ping = QDBusMessage::createMethodCall(
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
            const QDBusPendingCall answer = own.asyncCall(ping);
            EXPECT_TRUE(waitUntil([&] { return answer.isFinished(); }));
        }
        runEventLoopFor(50ms);
        QDBusConnection::disconnectFromBus(name);
    }

private:
    VirtualDesktop m_desktop{{.windowManager = VirtualDesktop::WindowManager::none,
                              .sessionBus = VirtualDesktop::SessionBus::own,
                              .openboxKeys = {}}};
    std::optional<DBusScreenLock> m_lock;
};

class SaverWorld final : public ScreenLockWorld {
public:
    SaverWorld(const char* name, bool locked) : m_saver(m_desktop.bus(), QString::fromLatin1(name), locked) {}
    [[nodiscard]] ScreenLock& lock() override { return m_desktop.lock(); }
    void setLocked(bool locked) override { m_saver.setActive(locked); }

private:
    BusDesktop m_desktop;
    ScriptedSaver m_saver;
};

class LoginWorld final : public ScreenLockWorld {
public:
    LoginWorld(const char* session, Telling telling, bool locked)
        : m_manager(m_desktop.bus(), locked),
          m_session(QString::fromLatin1(session)),
          m_telling(telling)
    {
    }
    [[nodiscard]] ScreenLock& lock() override
    {
        ScreenLock& made = m_desktop.lock(m_session);
        m_desktop.settle(); // it finds its session first
        return made;
    }
    void setLocked(bool locked) override { m_manager.setLockedHint(locked, m_telling); }

private:
    BusDesktop m_desktop;
    ScriptedLoginManager m_manager;
    QString m_session;
    Telling m_telling;
};

ScreenLockWorldFactory saver(const char* name)
{
    return {name, [name](bool locked) { return std::make_unique<SaverWorld>(name, locked); }};
}

ScreenLockWorldFactory login(const char* name, const char* session, Telling telling)
{
    return {name, [=](bool locked) { return std::make_unique<LoginWorld>(session, telling, locked); }};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Savers, ScreenLockContract,
                         testing::Values(saver("org.freedesktop.ScreenSaver"), saver("org.gnome.ScreenSaver"),
                                         saver("org.cinnamon.ScreenSaver"), saver("org.mate.ScreenSaver"),
                                         saver("org.xfce.ScreenSaver")));
INSTANTIATE_TEST_SUITE_P(Login, ScreenLockContract,
                         testing::Values(login("ByName", "7", Telling::withValue),
                                         login("ByProcess", "", Telling::withValue),
                                         login("WithoutTheValue", "7", Telling::invalidated)));

TEST(DBusScreenLock, ASaverThatComesLaterIsFollowedAndOneThatGoesLocksNothing)
{
    BusDesktop desktop;
    ScreenLock& lock = desktop.lock();
    desktop.settle();
    EXPECT_FALSE(lock.isLocked());
    {
        const ScriptedSaver saver(desktop.bus(), gnome, true);
        EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    }
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));
}

TEST(DBusScreenLock, AnyOfThemIsEnough)
{
    BusDesktop desktop;
    ScriptedSaver saver(desktop.bus(), gnome, true);
    ScriptedLoginManager manager(desktop.bus(), true);
    ScreenLock& lock = desktop.lock();
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    desktop.settle();
    saver.setActive(false);
    desktop.settle();
    EXPECT_TRUE(lock.isLocked());
    manager.setLockedHint(false);
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));
}

TEST(DBusScreenLock, ALoginManagerThatComesLaterIsFollowed)
{
    BusDesktop desktop;
    ScreenLock& lock = desktop.lock();
    desktop.settle();
    ScriptedLoginManager manager(desktop.bus(), true);
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
}

TEST(DBusScreenLock, ARequestToLockCountsUntilTheLockerHasGoneAgain)
{
    BusDesktop desktop;
    ScriptedLoginManager manager(desktop.bus());
    ScreenLock& lock = desktop.lock();
    desktop.settle();
    manager.requestLock();
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    manager.setLockedHint(true);
    desktop.settle();
    EXPECT_TRUE(lock.isLocked());
    manager.setLockedHint(false);
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));

    manager.requestLock();
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    manager.requestUnlock();
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));
}

TEST(DBusScreenLock, ARequestThatASaverHasFulfilledEndsWithTheSaver)
{
    BusDesktop desktop;
    ScriptedSaver saver(desktop.bus(), gnome);
    ScriptedLoginManager manager(desktop.bus());
    ScreenLock& lock = desktop.lock();
    desktop.settle();
    manager.requestLock();
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    saver.setActive(true);
    desktop.settle();
    saver.setActive(false);
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }, 5s));
}

TEST(DBusScreenLock, ARequestThatNoLockerFollowsEndsByItself)
{
    BusDesktop desktop;
    ScriptedLoginManager manager(desktop.bus());
    ScreenLock& lock = desktop.lock({}, 200ms);
    desktop.settle();
    manager.requestLock();
    EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }, 5s));
}

TEST(DBusScreenLock, WithoutAnyBusNothingIsLocked)
{
    const auto none = std::make_shared<LastingBus>(QStringLiteral("unix:path=/nowhere/bus"));
    const DBusScreenLock lock({.sessionBus = none, .systemBus = none});
    EXPECT_FALSE(lock.isLocked());
}

namespace {

/// A screen lock whose buses end and come back, each by itself.
struct LastingDesktop {
    ReturningBus session;
    ReturningBus system;
    DBusScreenLock lock{{.sessionBus = std::make_shared<LastingBus>(session.address()),
                         .systemBus = std::make_shared<LastingBus>(system.address())}};

    [[nodiscard]] bool comesToBe(bool locked)
    {
        return waitUntil([&] { return lock.isLocked() == locked; }, 20s);
    }
};

} // namespace

TEST(DBusScreenLock, ASaverOnABusThatHasComeBackIsFollowed)
{
    LastingDesktop desktop;
    for (int round = 0; round < 2; ++round) {
        desktop.session.kill();
        desktop.session.start();
        {
            // The screen is covered already when the bus is reached, and then opened.
            ScriptedSaver saver(desktop.session.address(), gnome, true);
            EXPECT_TRUE(desktop.comesToBe(true));
            saver.setActive(false);
            EXPECT_TRUE(desktop.comesToBe(false));
            saver.setActive(true);
            EXPECT_TRUE(desktop.comesToBe(true));
        }
        EXPECT_TRUE(desktop.comesToBe(false));
    }
}

TEST(DBusScreenLock, ASaverThatEndedWithItsBusHoldsTheLockOnlyUntilTheBusIsBack)
{
    LastingDesktop desktop;
    auto saver = std::make_unique<ScriptedSaver>(desktop.session.address(), gnome, true);
    EXPECT_TRUE(desktop.comesToBe(true));
    desktop.session.kill();
    saver.reset();
    EXPECT_FALSE(waitUntil([&] { return !desktop.lock.isLocked(); }, 200ms));
    desktop.session.start();
    EXPECT_TRUE(desktop.comesToBe(false));
}

TEST(DBusScreenLock, ALoginManagerOnABusThatHasComeBackIsFollowed)
{
    LastingDesktop desktop;
    for (int round = 0; round < 2; ++round) {
        desktop.system.kill();
        desktop.system.start();
        ScriptedLoginManager manager(desktop.system.address(), true);
        EXPECT_TRUE(desktop.comesToBe(true));
        manager.setLockedHint(false);
        EXPECT_TRUE(desktop.comesToBe(false));
        manager.requestLock();
        EXPECT_TRUE(desktop.comesToBe(true));
        manager.requestUnlock();
        EXPECT_TRUE(desktop.comesToBe(false));
    }
}

} // namespace tulvane::test
